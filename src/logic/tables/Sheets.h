#pragma once

#include <string>

#include "core/Progress.h"
#include "tables/PageWriter.h"

namespace kelvo {

/// What stands at the head of every sheet of a report.
struct SheetHead {
    std::string title;    ///< "ISE Sample Data Table"
    std::string file;     ///< name of the file whose content is printed, empty: none yet
    std::string printed;  ///< "24/11/2026 09:05"
};

/// The analyst has given a print up. Raised from `Sheets` and caught where the print was begun, nowhere else.
struct PrintCancelled {};

/// Sheets of paper that carry their head: title, file, date and "Page n of N" stand on each, whoever begins it. The
/// body begins at `Top()`. It prints on another writer, or with none it only counts: a report run once on such a
/// counter and once on paper knows its number of sheets beforehand.
class Sheets : public PageWriter {
 public:
    /// @param paper the device, whose measures count in either case
    /// @param total sheets of the report; 0 counts them and draws nothing
    Sheets(PageWriter& paper, SheetHead head, int total, Progress& progress);

    /// Number of the present sheet, from 1.
    int Number() const { return number_; }
    /// Twips from the top to the body.
    float Top() const { return top_; }
    /// Lets waiting work be done, and gives the print up when the analyst wants so. @throws PrintCancelled
    void Breathe();

    float Width() const override { return paper_.Width(); }
    float Height() const override { return paper_.Height(); }
    float TextWidth(const std::string& text) const override;
    float LineHeight() const override;
    void Draw(const DisplayList& picture, float width, float height) override;
    void NewPage() override;
    void EndDocument() override;

 protected:
    void DrawText(float x, float y, const std::string& text) override;

 private:
    void PrintHead();
    bool Counting() const { return total_ == 0; }

    PageWriter& paper_;
    SheetHead head_;
    int total_, number_ = 1;
    float top_ = 0;
    Progress& progress_;
};

}  // namespace kelvo
