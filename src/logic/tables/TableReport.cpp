#include <algorithm>
#include <array>
#include <vector>

#include "core/Navigation.h"
#include "tables/PrintedPage.h"
#include "tables/Reports.h"
#include "tables/ResultsPage.h"
#include "tables/RowUncertainty.h"
#include "text/Number.h"

namespace kelvo {
namespace {

constexpr float HeadStep = 500;
constexpr float HeadSize = 12, TitleSize = 18, TableSize = 10, SmallestSize = 6;

struct Column {
    int col;            ///< of the grid
    const char* upper;  ///< first line of the head, empty when the head has one line
    const char* lower;
    int field;  ///< characters
};

const std::vector<Column> IseColumns = {{1, "", "Number", 20}, {2, "", "Time", 12},  {3, "", "mV", 12},
                                        {4, "", "ppm", 12},    {5, "", "mol/L", 12}, {6, "", "°C", 12},
                                        {8, "", "pH", 12}};
const std::vector<Column> PhColumns = {{1, "", "No.", 10},       {2, "", "Time", 10},      {3, "", "E.1(pH)", 10},
                                       {4, "", "E.1(mV)", 10},   {5, "", "Temp.1 °C", 10}, {6, "", "Temp.1 °F", 10},
                                       {7, "", "E.2(pH)", 10},   {8, "", "E.2(mV)", 10},   {9, "", "Temp.2 °C", 10},
                                       {10, "", "Temp.2 °F", 10}};

std::vector<Column> AdditionColumns(bool sampleFirst) {
    return {{1, "", "Number", 7},
            {2, "", "Time", 7},
            {3, "Sample", "(°C)", 7},
            {4, "Sample", "(°F)", 7},
            {5, "Sample", "(mL)", 7},
            {6, "Standard", "(mL)", 11},
            {7, "Standard", "(ppm)", 11},
            {8, "Standard", "(mol/L)", 11},
            {9, sampleFirst ? "Sample" : "Standard", "(mV)", 11},
            {10, sampleFirst ? "Sample+ " : "Standard+", sampleFirst ? "Std.(mV)" : "Sample(mV)", 11},
            {11, "Sample", "(ppm)", 11},
            {12, "Sample", "(mol/L)", 11}};
}

ScreenCode Owner(const Navigation& navigation) {
    return navigation.ReturnTo();
}

bool IsAddition(const Navigation& navigation) {
    return Owner(navigation) == ScreenCode::frmSampa || Owner(navigation) == ScreenCode::frmStanad01;
}

bool IsPh(const Navigation& navigation) {
    return Owner(navigation) == ScreenCode::frmDsply ||
           (Owner(navigation) == ScreenCode::frmPHMe && navigation.pHMode != 0);
}

std::vector<Column> ColumnsOf(const Navigation& navigation, const DataTable& table) {
    if (IsAddition(navigation)) return AdditionColumns(Owner(navigation) == ScreenCode::frmStanad01);
    if (!IsPh(navigation)) return IseColumns;
    std::vector<Column> columns = PhColumns;
    if (table.Cols() > 3 && table.Cell(0, 3) == "Elect.1 (ppm)") columns[2].lower = "E.1(ppm)";
    return columns;
}

std::string SectionLine(const Navigation& navigation) {
    switch (Owner(navigation)) {
        case ScreenCode::frmDsply: return "pH Measurement Data:";
        case ScreenCode::frmPHMe:
            return navigation.pHMode != 0 ? "pH Continuous Recording Data:" : "ISE Continuous Recording Data:";
        default: return {};
    }
}

/// What stands behind one of the labels that a head text may begin with.
std::string Without(const std::string& text, std::initializer_list<const char*> labels) {
    for (const std::string label : labels)
        if (text.starts_with(label)) return text.substr(label.size());
    return text;
}

/// Line `index` of a box with several.
std::string BoxLine(const std::string& text, int index) {
    std::size_t start = 0;
    for (; index > 0; --index) {
        const std::size_t end = text.find("\r\n", start);
        if (end == std::string::npos) return {};
        start = end + 2;
    }
    return text.substr(start, text.find("\r\n", start) - start);
}

/// A cell as it is printed, without the blank in front that a number may have.
std::string_view CellText(const DataTable& table, int row, int col) {
    if (col >= table.Cols()) return {};
    std::string_view cell = table.Cell(row, col);
    cell.remove_prefix(std::min(cell.find_first_not_of(' '), cell.size()));
    return cell;
}

/// Prints one table.
class TablePrinter {
 public:
    TablePrinter(const Navigation& navigation, const DataTable& table, Sheets& page)
        : navigation_(navigation), table_(table), page_(page), columns_(ColumnsOf(navigation, table)) {
        lastRow_ = table.Rows() - 1;
        while (lastRow_ > 0 && table.RowIsEmpty(lastRow_))
            --lastRow_;
        for (int row = 1; row <= lastRow_; ++row)
            anyFacts_ = anyFacts_ || !table.Facts(row).Empty();
    }

    void Print() {
        PrintHead();
        FitColumns();
        page_.FontSize(TableSize);
        if (const std::string section = SectionLine(navigation_); !section.empty()) {
            page_.Print(section);
            page_.MoveTo(0, page_.CurrentY() + page_.LineHeight() / 2);
        }
        PrintColumnHeads();
        for (int row = 1; row <= lastRow_; ++row) {
            page_.Breathe();
            PrintRow(row);
            PrintFacts(row);
        }
        PrintClosingLines();
    }

 private:
    void PrintHead() {
        page_.FontSize(TitleSize);
        const std::string title = TableTitle(navigation_);
        page_.MoveTo(std::max(0.0f, (page_.Width() - page_.TextWidth(title)) / 2), page_.CurrentY());
        page_.Print(title);
        page_.FontSize(HeadSize);
        page_.Print(Rule(page_, '='));
        if (table_.HeadKind == DataTable::Head::Ise)
            PrintIseHead();
        else
            PrintPhHead();
        if (page_.CurrentY() + page_.LineHeight() > page_.Height()) page_.NewPage();
        page_.Print(Rule(page_, IsAddition(navigation_) ? '_' : '='));
    }

    void Field(const char* label, const std::string& value) { PrintField(page_, label, value, HeadStep); }

    void PrintIseHead() {
        // The upper of two captions is the calibration in use; a table from a file has the lower one alone.
        const auto caption = [&](std::size_t upper) {
            return table_.Label1[upper].empty() ? table_.Label1[upper + 1] : table_.Label1[upper];
        };
        Field("Calibration Date/Time :", table_.txtData[0]);
        Field("Reference Electrode:", Without(caption(6), {"Ref. : "}));
        Field("Electrode serial number:", Without(caption(8), {"ISE Serial No. ", "Serial No. "}));
        Field("Calibration Standard (ppm):", BoxLine(table_.txtData[1], 0));
        Field("Calibration Value (mV):", BoxLine(table_.txtData[1], 1));
        Field("Calibration Slopes:", BoxLine(table_.txtData[1], 2));
        Field("Ion:", table_.txtData[4]);
        Field("Temperature:", Temperature());
        Field("ISAB/Notes:", table_.txtData[7]);
        Field("Operator Name:", Without(table_.txtData[6], {"Operator: "}));
        Field("Experiment Date:", table_.txtData[5]);
    }

    /// "25 °C, 77.0 °F".
    std::string Temperature() const {
        std::string text;
        for (const auto& [degrees, unit] : {std::pair{table_.txtData[2], " °C"}, std::pair{table_.txtData[3], " °F"}})
            if (!degrees.empty()) text += (text.empty() ? "" : ", ") + degrees + unit;
        return text;
    }

    void PrintPhHead() {
        for (const std::size_t first : {std::size_t{0}, std::size_t{3}}) {
            const std::string& buffers = table_.txtData[first + 2];
            const bool known = !table_.txtData[first].empty() || !table_.txtData[first + 1].empty() ||
                               (!buffers.empty() && buffers != "pH:\r\nmV:");
            if (!known) continue;
            Field(first == 0 ? "Electrode 1 :" : "Electrode 2 :",
                  table_.txtData[first + 1] + "   " + table_.txtData[first]);
            Field("Calibration Buffers (pH):", Without(BoxLine(buffers, 0), {"pH: ", "pH:"}));
            Field("Calibration Value (mV):", Without(BoxLine(buffers, 1), {"mV:"}));
        }
        Field("Operator Name:", Without(table_.Label1[9], {"Operator: "}));
        Field("Experiment Date:", table_.txtData[6]);
    }

    int TotalField() const {
        int total = 0;
        for (const Column& column : columns_)
            total += column.field;
        return total;
    }

    /// Letters of this size or smaller let the fields stand across the page, none smaller than `smallest`.
    float FittingSize(float size, float smallest) {
        for (page_.FontSize(size); size > smallest && Capacity(page_) < TotalField(); page_.FontSize(size))
            size = std::max(smallest, size - 0.25f);
        return size;
    }

    /// Fields grow for longer cells, the letters shrink a little for that, and what is longer still is wrapped.
    void FitColumns() {
        constexpr int Widest = 1000;  // no page is wider
        constexpr float LittleSmaller = 0.85f;
        const float plain = FittingSize(TableSize, SmallestSize);
        for (Column& column : columns_)
            for (int row = 1; row <= lastRow_; ++row)
                column.field =
                    std::max(column.field, std::min(Characters(CellText(table_, row, column.col)), Widest) + 1);
        rowSize_ = FittingSize(plain, std::max(SmallestSize, plain * LittleSmaller));
        const int room = std::max(Capacity(page_), 3 * static_cast<int>(columns_.size()));
        while (TotalField() > room)
            --std::max_element(columns_.begin(), columns_.end(), [](const Column& a, const Column& b) {
                  return a.field < b.field;
              })->field;
    }

    /// Prints cells in their fields, in as many lines as the longest needs.
    void PrintCells(const std::vector<std::string_view>& cells) {
        std::vector<std::vector<std::string>> wrapped;
        std::size_t lines = 1;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            wrapped.push_back(Wrapped(cells[i], columns_[i].field - 1));
            lines = std::max(lines, wrapped.back().size());
        }
        for (std::size_t n = 0; n < lines; ++n) {
            std::string line;
            for (std::size_t i = 0; i < wrapped.size(); ++i)
                line += Padded(n < wrapped[i].size() ? wrapped[i][n] : std::string(), columns_[i].field);
            line.erase(line.find_last_not_of(' ') + 1);
            TakeRoom();
            page_.Print(line);
        }
    }

    /// Goes to a new page when the next line would pass the bottom.
    void TakeRoom() {
        if (page_.CurrentY() + page_.LineHeight() <= page_.Height()) return;
        page_.NewPage();
        PrintColumnHeads();
    }

    void PrintColumnHeads() {
        page_.FontSize(rowSize_);
        std::vector<std::string_view> upper, lower;
        bool two = false;
        for (const Column& column : columns_) {
            upper.emplace_back(column.upper);
            lower.emplace_back(column.lower);
            two = two || *column.upper != '\0';
        }
        if (two) PrintCells(upper);
        PrintCells(lower);
        page_.MoveTo(0, page_.CurrentY() + page_.LineHeight() / 3);
    }

    void PrintRow(int row) {
        page_.FontSize(rowSize_);
        std::vector<std::string_view> cells;
        for (const Column& column : columns_)
            cells.push_back(CellText(table_, row, column.col));
        PrintCells(cells);
    }

    void PrintWrapped(const std::string& text, int indent) {
        if (text.empty()) return;
        for (const std::string& line : Wrapped(text, std::max(1, Capacity(page_) - indent))) {
            TakeRoom();
            page_.Print(std::string(static_cast<std::size_t>(indent), ' ') + line);
        }
    }

    /// What is told beside a row stands below it: the fields of the row are fixed. Where nothing is known of any row,
    /// one line at the end says so for all.
    void PrintFacts(int row) {
        const std::string line = TextBeside(table_, row);
        if (!anyFacts_) {
            bareSamples_ = bareSamples_ || !line.empty();
            return;
        }
        constexpr int Indent = 4;
        PrintWrapped(line, Indent);
        const std::string basis = table_.Facts(row).Get(fact::Basis);
        if (!basis.empty() && std::find(bases_.begin(), bases_.end(), basis) == bases_.end()) bases_.push_back(basis);
    }

    void PrintClosingLines() {
        if (const auto results = ResultsOf(table_); WorthTelling(results)) {
            page_.MoveTo(0, page_.CurrentY() + page_.LineHeight());
            PrintResults(results, page_);
            page_.FontSize(rowSize_);
        }
        if (bareSamples_) PrintWrapped("No interval goes with these rows.", 0);
        for (const std::string& basis : bases_)
            PrintWrapped("Interval: " + basis + ".", 0);
    }

    const Navigation& navigation_;
    const DataTable& table_;
    Sheets& page_;
    std::vector<Column> columns_;
    std::vector<std::string> bases_;  ///< what the intervals printed so far hold, each once
    bool anyFacts_ = false, bareSamples_ = false;
    int lastRow_ = 0;
    float rowSize_ = TableSize;
};

}  // namespace

std::string TableTitle(const Navigation& navigation) {
    switch (Owner(navigation)) {
        case ScreenCode::frmDsply: return "pH Measurement";
        case ScreenCode::frmPHMe:
            return navigation.pHMode != 0 ? "pH Continuous Recording" : "ISE Continuous Recording";
        case ScreenCode::frmSampa: return "Sample Addition Method";
        case ScreenCode::frmStanad01: return "Standard Addition Method";
        default: return "ISE Sample Data Table";
    }
}

void PrintTable(const Navigation& navigation, const DataTable& table, Sheets& page) {
    TablePrinter(navigation, table, page).Print();
}

}  // namespace kelvo
