#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// The bytes of an XLSX workbook, built in memory: no work files, no locale. Sheets are written row by row from the
/// top and packed as they grow, so that a long table costs its packed size and no more.
///
/// A cell is a text, which no program takes for a formula or a number, or a number with the digits of its text: "12.10"
/// is 12.1 shown as 12.10, "1.65E-4" is 0.000165 shown as 1.65E-4.
class Workbook {
 public:
    /// Rows of one sheet, the limit of the format.
    static constexpr int RowsASheet = 1048576;

    Workbook();
    ~Workbook();
    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;

    /// Ends the present sheet and begins the next. @param widths of the columns in characters
    /// @param fixedRows rows at the top that stay in sight
    void BeginSheet(const std::string& name, const std::vector<int>& widths, int fixedRows);
    void BeginRow();
    /// The next cell of the row; an empty text leaves it empty. More than 32,767 characters are cut, which `CutTexts`
    /// counts.
    void Text(std::string_view text, bool bold = false);
    /// The same for a text that `NumberText` accepts.
    void Number(std::string_view text);

    int CutTexts() const { return cutTexts_; }

    /// Ends the workbook. It and every other step @throws RuntimeError 7 when there is no memory to pack it, or a sheet
    /// or the whole grows to 4 GB, which the format does not hold.
    std::string Bytes();

 private:
    class Packer;

    void EndSheet();
    int StyleOf(const std::string& format);
    std::string StyleSheet() const;
    void Cell(std::string_view attributes, std::string_view content);

    struct Part {
        std::string name;
        std::uint32_t crc = 0, size = 0, packed = 0, offset = 0;
    };
    void AddPart(const std::string& name, std::string_view content);
    void BeginPart(const std::string& name);
    void EndPart();
    void Write(std::string_view content);

    std::string bytes_;
    std::vector<Part> parts_;
    std::vector<std::string> sheets_;
    std::map<std::string, int> formats_;  ///< number format to its place among the styles
    std::unique_ptr<Packer> packer_;
    int row_ = 0, col_ = 0, cutTexts_ = 0;
};

/// Whether a spreadsheet can hold the text as a number and show it again digit by digit: sign, digits, dot, exponent,
/// no zeros in front ("007" is a name), at most 15 digits that count. Blanks in front do not matter.
bool NumberText(std::string_view text);

}  // namespace kelvo
