#include "tables/DataTable.h"

#include <algorithm>
#include <utility>

#include "text/RuntimeError.h"

namespace kelvo {

std::string_view CellOf(std::string_view text, int col) {
    for (; col > 0; --col) {
        const std::size_t tab = text.find('\t');
        if (tab == std::string_view::npos) return {};
        text.remove_prefix(tab + 1);
    }
    return text.substr(0, text.find('\t'));
}

void DataTable::SetHeads(const std::vector<std::string>& heads) {
    cols_ = static_cast<int>(heads.size()) + 1;
    std::string& row = rows_.front();
    row.clear();
    for (const std::string& head : heads)
        row.append(1, '\t').append(head);
    HeadChanged();
}

void DataTable::LayOutAs(const DataTable& other) {
    HeadKind = other.HeadKind;
    Label1 = other.Label1;
    ColWidths = other.ColWidths;
    cols_ = other.cols_;
    rows_.front() = other.rows_.front();
    HeadChanged();
}

std::string& DataTable::At(int row) {
    if (row < 0 || row >= Rows()) throw RuntimeError(ErrorNumber::Subscript);
    return rows_[static_cast<std::size_t>(row)];
}

const std::string& DataTable::At(int row) const {
    return const_cast<DataTable*>(this)->At(row);
}

const std::string& DataTable::RowText(int row) const {
    return At(row);
}

std::string_view DataTable::Cell(int row, int col) const {
    if (col < 0 || col >= cols_) throw RuntimeError(ErrorNumber::Subscript);
    return CellOf(At(row), col);
}

void DataTable::SetCell(int row, int col, std::string_view text) {
    if (col < 0 || col >= cols_) throw RuntimeError(ErrorNumber::Subscript);
    std::string& line = At(row);
    std::size_t start = 0;
    for (int c = 0; c < col; ++c) {
        std::size_t tab = line.find('\t', start);
        if (tab == std::string::npos) {
            tab = line.size();
            line += '\t';
        }
        start = tab + 1;
    }
    const std::size_t end = std::min(line.find('\t', start), line.size());
    line.replace(start, end - start, text);
    if (listener_ != nullptr) listener_->RowChanged(row);
}

std::string DataTable::RowLine(int row) const {
    std::string line;
    AppendRowLine(row, line);
    return line;
}

void DataTable::AppendRowLine(int row, std::string& out) const {
    const std::string& text = At(row);
    auto tabs = std::count(text.begin(), text.end(), '\t');
    if (tabs < cols_) {
        out += text;
        for (++tabs; tabs < cols_; ++tabs)
            out += '\t';
        return;
    }
    // The cells beyond the columns are left out.
    std::size_t end = 0;
    for (int col = 0; col < cols_; ++col)
        end = text.find('\t', end) + 1;
    out.append(text, 0, end - 1);
}

bool DataTable::RowIsEmpty(int row) const {
    return At(row).find_first_not_of('\t') == std::string::npos;
}

const RowFacts& DataTable::Facts(int row) const {
    static const RowFacts none;
    At(row);
    const RowFacts* facts = facts_.empty() ? nullptr : facts_[static_cast<std::size_t>(row)].get();
    return facts != nullptr ? *facts : none;
}

void DataTable::SetFacts(int row, RowFacts facts) {
    At(row);
    HoldFacts(row, std::move(facts));
    if (listener_ != nullptr) listener_->RowChanged(row);
}

void DataTable::HoldFacts(int row, RowFacts facts) {
    if (facts.Empty() && facts_.empty()) return;
    facts_.resize(rows_.size());
    facts_[static_cast<std::size_t>(row)] =
        facts.Empty() ? nullptr : std::make_shared<const RowFacts>(std::move(facts));
}

void DataTable::AddItem(std::string text, int index, RowFacts facts) {
    if (index < 0 || index > Rows()) throw RuntimeError(ErrorNumber::Subscript);
    if (Rows() >= MaxRows) throw RuntimeError(ErrorNumber::OutOfMemory);
    text.shrink_to_fit();
    rows_.insert(rows_.begin() + index, std::move(text));
    if (!facts_.empty()) facts_.insert(facts_.begin() + index, nullptr);
    HoldFacts(index, std::move(facts));
    if (listener_ != nullptr) listener_->RowAdded(index);
}

void DataTable::RemoveItem(int row) {
    At(row);
    rows_.erase(rows_.begin() + row);
    if (!facts_.empty()) facts_.erase(facts_.begin() + row);
    if (listener_ != nullptr) listener_->RowsRemoved(row, 1);
}

void DataTable::RemoveRowsFrom(int first) {
    const int count = Rows() - first;
    if (count <= 0) return;
    rows_.erase(rows_.begin() + first, rows_.end());
    if (!facts_.empty()) facts_.resize(rows_.size());
    rows_.shrink_to_fit();
    if (listener_ != nullptr) listener_->RowsRemoved(first, count);
}

void DataTable::ClearCells(int row, int first, int last) {
    for (int c = first; c <= std::min(last, cols_ - 1); ++c)
        if (!Cell(row, c).empty()) SetCell(row, c, {});
    HoldFacts(row, {});
}

void DataTable::Clear() {
    const std::string heads = rows_.empty() ? std::string() : rows_.front();
    rows_.assign({heads, std::string()});
    facts_.clear();
    rows_.shrink_to_fit();
    TopRow = 1;
    HeadChanged();
}

void DataTable::HeadChanged() {
    if (listener_ != nullptr) listener_->TableReset();
}

}  // namespace kelvo
