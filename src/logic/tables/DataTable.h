#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/RowFacts.h"
#include "core/WorkingTable.h"
#include "text/FileMark.h"

namespace kelvo {

/// The one data table: captions and texts of its head, and the grid. Counts as Kelvo counts: row 0 holds the
/// column heads, and while a table is under construction its last row is the empty row for the next entry, so a
/// table of three samples has `Rows()` 5. A row is one text with its cells joined by TAB; cells that it lacks are
/// empty, cells beyond `Cols()` are neither shown nor written.
///
/// Rows and columns out of range are RuntimeError 9.
class DataTable {
 public:
    /// Hears of changes after they have happened; the grid on the screen is one.
    class Listener {
     public:
        virtual ~Listener() = default;
        virtual void RowAdded(int row) = 0;
        virtual void RowsRemoved(int first, int count) = 0;
        virtual void RowChanged(int row) = 0;
        /// Heads, texts or columns: everything is to be read again.
        virtual void TableReset() = 0;
    };

    static constexpr int MaxRows = 4'000'000;

    enum class Head { None, Ise, Ph };
    Head HeadKind = Head::None;          ///< whose captions these are
    std::array<std::string, 11> Label1;  ///< captions of the head
    std::array<std::string, 8> txtData;  ///< texts of the head; several lines in one are joined by CR LF
    std::string FileName;                ///< `CMDialog1.FileName` of the table screen, empty: none chosen
    /// A file that the table was read from or written to, as it was left.
    struct KnownFile {
        FileMark mark;
        bool changed = false;  ///< somebody else has changed it once, and may do so again
    };
    std::map<std::string, KnownFile> Files;  ///< by their full names
    MethodHead Method;
    bool ShortHead = false;      ///< the file it was read from has a short head, which has taken some of the rows
    std::vector<int> ColWidths;  ///< twips, a guide
    int TopRow = 1;              ///< first row in view below the heads

    DataTable() { Clear(); }

    int Rows() const { return static_cast<int>(rows_.size()); }
    int Cols() const { return cols_; }

    /// Sets the columns and the texts of row 0 from column 1 on; column 0 has no head.
    void SetHeads(const std::vector<std::string>& heads);
    /// Takes captions, columns and their widths over from another table; texts, rows and file name are this one's.
    void LayOutAs(const DataTable& other);

    /// One cell, a view that lives until the row changes.
    std::string_view Cell(int row, int col) const;
    void SetCell(int row, int col, std::string_view text);
    /// The row as it was added.
    const std::string& RowText(int row) const;
    /// The row with exactly `Cols()` cells.
    std::string RowLine(int row) const;
    /// The same added to a text.
    void AppendRowLine(int row, std::string& out) const;
    /// Whether no cell of the row holds anything.
    bool RowIsEmpty(int row) const;

    /// What is known of the row beyond its cells. It moves and goes with the row.
    const RowFacts& Facts(int row) const;
    void SetFacts(int row, RowFacts facts);

    /// Puts a row in before the row that now has this index; index `Rows()` puts it last.
    /// @throws RuntimeError 7 above MaxRows.
    void AddItem(std::string text, int index, RowFacts facts = {});
    void RemoveItem(int row);
    /// Removes the rows from the last down to `first`.
    void RemoveRowsFrom(int first);
    /// Empties the cells `first` to `last` of a row, columns the table does not have left out, and forgets its facts.
    void ClearCells(int row, int first, int last);
    /// Row 0 and one empty row, whatever was there: the grid as it is made.
    void Clear();
    /// Makes room for that many rows, so that filling them takes no more than they need.
    void Reserve(int rows) { rows_.reserve(static_cast<std::size_t>(rows)); }

    /// While one stands, rows come and go in silence; at its end the table is told to be read again.
    class BatchUpdate {
     public:
        explicit BatchUpdate(DataTable& table) : table_(table), listener_(table.listener_) {
            table.listener_ = nullptr;
        }
        BatchUpdate(const BatchUpdate&) = delete;
        BatchUpdate& operator=(const BatchUpdate&) = delete;
        ~BatchUpdate() {
            table_.listener_ = listener_;
            table_.HeadChanged();
        }

     private:
        DataTable& table_;
        Listener* listener_;
    };

    /// Tells the listeners that heads or texts have been set anew.
    void HeadChanged();
    void Listen(Listener* listener) { listener_ = listener; }

 private:
    std::string& At(int row);
    void HoldFacts(int row, RowFacts facts);
    const std::string& At(int row) const;

    int cols_ = 2;
    std::vector<std::string> rows_;
    std::vector<std::shared_ptr<const RowFacts>> facts_;  ///< as many as rows, or none at all
    Listener* listener_ = nullptr;
};

/// Part of `text` behind its `col`-th TAB up to the next; empty when there are fewer.
std::string_view CellOf(std::string_view text, int col);

}  // namespace kelvo
