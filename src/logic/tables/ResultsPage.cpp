#include "tables/ResultsPage.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <numeric>

#include "statistics/Figures.h"
#include "tables/PrintedPage.h"
#include "tables/Sheets.h"
#include "tables/TableExport.h"
#include "tables/Workbook.h"
#include "text/Number.h"

namespace kelvo {
namespace {

using Json = nlohmann::ordered_json;

std::string Plain(double value, double spread) {
    return spread > 0 ? WithPlacesOf(value, spread) : TrimStr(value);
}

std::string Digits(double value) {
    return WithPlacesOf(value, value);
}

std::string RemarkOf(const ReportedResult& result) {
    if (result.why.empty() || result.interval) return result.words;
    return "no 95 % interval: " + result.why + (result.words.empty() ? "" : "; " + result.words);
}

/// What stands beside a row in the list of rows.
std::string BesideRow(const ResultRow& row) {
    if (!row.struck.empty()) return "struck out: " + row.struck;
    if (!row.value) return "no concentration";
    std::string text = row.suspect ? "outlier (Grubbs)" : "";
    if (!row.correction.empty()) text += (text.empty() ? "" : "; ") + ("drift corrected by " + row.correction);
    return text;
}

std::string Numbers(const std::optional<double>& value) {
    return value ? TrimStr(*value) : std::string();
}

std::string Joined(const std::vector<std::string>& cells) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i)
        line += (i > 0 ? "\t" : "") + cells[i];
    return line + "\n";
}

/// A line that is wider than the page goes on in the next one.
void PrintLine(Sheets& page, const std::string& text, int indent = 0) {
    for (const std::string& line : Wrapped(text, std::max(1, Capacity(page) - indent))) {
        if (page.CurrentY() + page.LineHeight() > page.Height()) page.NewPage();
        page.Print(std::string(static_cast<std::size_t>(indent), ' ') + line);
    }
}

void AddSheet(Workbook& book, const char* name, const Cells& cells) {
    constexpr int Widest = 60;
    std::vector<int> widths;
    for (std::size_t col = 0; col < cells.heads.size(); ++col) {
        int width = Characters(cells.heads[col]);
        for (const auto& row : cells.rows)
            width = std::max(width, Characters(row[col]));
        widths.push_back(std::min(width + 2, Widest));
    }
    book.BeginSheet(name, widths, 1);
    book.BeginRow();
    for (const std::string& head : cells.heads)
        book.Text(head, true);
    for (const auto& row : cells.rows) {
        book.BeginRow();
        for (std::size_t col = 0; col < row.size(); ++col)
            // The first column names the sample: a name that looks like a number stays a name.
            col > 0 && NumberText(row[col]) ? book.Number(row[col]) : book.Text(row[col]);
    }
}

}  // namespace

const std::vector<std::string>& ResultHeads() {
    static const std::vector<std::string> heads = {
        "Sample",  "n",     "Result",   "95 % from", "95 % to",        "Unit",     "u",     "s",
        "RSD (%)", "Blank", "Dilution", "Coverage",  "Interval holds", "Recovery", "Remark"};
    return heads;
}

std::vector<std::string> ResultLine(const ReportedResult& result) {
    const auto s = result.Deviation(), relative = result.RelativeDeviation();
    return {result.sample,
            std::to_string(result.n),
            result.ValueText(),
            result.LowText(),
            result.HighText(),
            result.unit,
            result.uncertainty > 0 ? Digits(result.uncertainty) : "",
            s ? Digits(*s) : "",
            relative ? WithPlaces(*relative, 2) : "",
            result.blank != 0 ? Plain(result.blank, result.blankDeviation) : "",
            result.dilution != 1 ? TrimStr(result.dilution) : "",
            result.interval && !result.budget.Parts().empty() ? result.budget.CoverageText() : "",
            result.Holds(),
            result.recovery,
            RemarkOf(result)};
}

Cells ResultCells(const std::vector<ReportedResult>& results) {
    Cells cells{ResultHeads(), {}};
    for (const ReportedResult& result : results)
        cells.rows.push_back(ResultLine(result));
    return cells;
}

Cells RowCells(const ReportedResult& result) {
    Cells cells{{"Row", "mV", result.unit, "Beside it"}, {}};
    for (const ResultRow& row : result.rows)
        // A cell's own digits; what is worked out here has no more than they have.
        cells.rows.push_back(
            {std::to_string(row.row), Numbers(row.mv),
             row.correction.empty() || !row.value ? Numbers(row.value) : WithPlacesOf(*row.value, *row.value / 100),
             BesideRow(row)});
    return cells;
}

Cells BudgetCells(const ReportedResult& result) {
    Cells cells{{"Part", "u (%)", "Share (%)", "Degrees of freedom", "Source"}, {}};
    for (std::size_t i = 0; i < result.budget.Parts().size(); ++i) {
        const Contribution& part = result.budget.Parts()[i];
        cells.rows.push_back({part.name, part.u > 0 ? Digits(part.u) : "0", WithPlaces(result.budget.Share(i), 1),
                              part.freedom > 0 ? std::to_string(part.freedom) : "", part.source});
    }
    return cells;
}

namespace {

constexpr float BarTop = 120, BarStep = 520, BarLeft = 2300, BarRight = 8000, SourceDown = 240;

}  // namespace

float BarsHeight(const Budget& budget) {
    return BarTop + BarStep * static_cast<float>(std::max<std::size_t>(1, budget.Parts().size()));
}

DisplayList BudgetBars(const Budget& budget, const std::string& none) {
    constexpr float NameSize = 10, SourceSize = 8, BarDown = 110, BarWidth = 10, HalfBar = 75, Edge = 60, Percent = 100;
    constexpr int Grey = 8, Blue = 1;
    DisplayList picture;
    float y = BarTop;
    if (budget.Parts().empty()) picture.Text(Edge, y, none, NameSize);
    for (std::size_t i = 0; i < budget.Parts().size(); ++i, y += BarStep) {
        const Contribution& part = budget.Parts()[i];
        const float share = static_cast<float>(budget.Share(i));
        picture.Text(Edge, y, part.name, NameSize, colour::Black, BarLeft - 2 * Edge);
        picture.Line(BarLeft, y + BarDown, BarRight, y + BarDown, Grey, 1);
        // A thick line is longer than its ends by half its width at each.
        const float length = (BarRight - BarLeft) * share / Percent;
        if (length > 2 * HalfBar)
            picture.Line(BarLeft + HalfBar, y + BarDown, BarLeft + length - HalfBar, y + BarDown, Blue, BarWidth);
        picture.Text(BarRight + 2 * Edge, y, WithPlaces(budget.Share(i), 1) + " %", NameSize);
        picture.Text(BarLeft, y + SourceDown, part.source, SourceSize, Grey, BarsWidth - BarLeft - Edge);
    }
    return picture;
}

std::string BudgetWords(const ReportedResult& result) {
    std::string words = "Uncertainty budget of " + result.sample + ": " + result.Line() + ".";
    for (std::size_t i = 0; i < result.budget.Parts().size(); ++i) {
        const Contribution& part = result.budget.Parts()[i];
        words += " " + part.name + " " + WithPlaces(result.budget.Share(i), 1) + " %, " + part.source + ".";
    }
    return words;
}

bool WorthTelling(const std::vector<ReportedResult>& results) {
    return std::any_of(results.begin(), results.end(), [](const ReportedResult& result) {
        return result.known &&
               (result.rows.size() > 1 || result.Corrected() || result.n == 0 || !result.recovery.empty());
    });
}

std::string ResultsText(const std::vector<ReportedResult>& results) {
    const Cells cells = ResultCells(results);
    std::string text = Joined(cells.heads);
    for (const auto& row : cells.rows)
        text += Joined(row);
    return text;
}

std::string ResultsCsv(const std::vector<ReportedResult>& results) {
    const Cells cells = ResultCells(results);
    std::string out;
    const auto add = [&](const std::vector<std::string>& row) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (i > 0) out += ',';
            AppendCsvField(out, row[i]);
        }
        out += "\r\n";
    };
    add(cells.heads);
    for (const auto& row : cells.rows)
        add(row);
    return out;
}

std::string ResultsJson(const std::vector<ReportedResult>& results) {
    Json list = Json::array();
    for (const ReportedResult& result : results) {
        Json rows = Json::array(), budget = Json::array();
        for (const ResultRow& row : result.rows) {
            Json object{{"row", row.row}};
            if (row.mv) object["mv"] = *row.mv;
            if (row.value) object["value"] = *row.value;
            if (!row.struck.empty()) object["struck"] = row.struck;
            if (row.suspect) object["outlier"] = true;
            rows.push_back(std::move(object));
        }
        for (std::size_t i = 0; i < result.budget.Parts().size(); ++i) {
            const Contribution& part = result.budget.Parts()[i];
            Json object{{"part", part.name},
                        {"source", part.source},
                        {"u_percent", part.u},
                        {"share_percent", result.budget.Share(i)}};
            if (part.freedom > 0) object["degrees"] = part.freedom;
            budget.push_back(std::move(object));
        }
        Json object{{"sample", result.sample}, {"unit", result.unit}, {"n", result.n}};
        if (result.n > 0) object["value"] = result.value;
        if (result.interval) {
            object["low"] = result.interval->low;
            object["high"] = result.interval->high;
            object["confidence"] = 0.95;
        }
        if (result.interval && !result.budget.Parts().empty()) {
            object["uncertainty"] = result.uncertainty;
            object["coverage_factor"] = result.budget.Coverage();
            object["degrees"] = result.budget.Freedom();
        }
        if (const auto deviation = result.Deviation()) object["s"] = *deviation;
        if (result.n > 0) object["measured"] = result.measured;
        object["dilution"] = result.dilution;
        object["blank"] = result.blank;
        if (result.blankDeviation > 0) object["blank_s"] = result.blankDeviation;
        if (!result.why.empty()) object["no_interval"] = result.why;
        if (!result.recovery.empty()) object["recovery"] = result.recovery;
        if (!result.words.empty()) object["remark"] = result.words;
        object["rows"] = std::move(rows);
        object["budget"] = std::move(budget);
        list.push_back(std::move(object));
    }
    const Json document{{"format", "kelvo-results"}, {"version", 1}, {"results", std::move(list)}};
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

void AddResultSheets(Workbook& book, const std::vector<ReportedResult>& results) {
    AddSheet(book, "Results", ResultCells(results));
    Cells budgets{{"Sample", "Part", "u (%)", "Share (%)", "Degrees of freedom", "Source"}, {}};
    for (const ReportedResult& result : results)
        for (std::vector<std::string> row : BudgetCells(result).rows) {
            row.insert(row.begin(), result.sample);
            budgets.rows.push_back(std::move(row));
        }
    AddSheet(book, "Budget", budgets);
}

void PrintResults(const std::vector<ReportedResult>& results, Sheets& page) {
    constexpr float TitleSize = 14, TextSize = 10, SmallSize = 9, Scale = 0.8f;
    page.FontSize(TitleSize);
    PrintLine(page, "Results");
    for (const ReportedResult& result : results) {
        page.Breathe();
        page.FontSize(TextSize);
        const float bars = Scale * BarsHeight(result.budget);
        // A result stands on one sheet with its bars.
        if (page.CurrentY() + bars + 3 * page.LineHeight() > page.Height()) page.NewPage();
        PrintLine(page, "Sample " + result.sample + ": " + result.Line());
        page.FontSize(SmallSize);
        constexpr int Indent = 4;
        std::string made = "n " + std::to_string(result.n);
        if (const auto deviation = result.Deviation()) made += ", s " + Digits(*deviation) + " " + result.unit;
        if (result.Corrected())
            made += ", measured " +
                    Plain(result.measured, result.spread ? result.spread->deviation : result.measured / 100) + " " +
                    result.unit;
        if (result.blank != 0) made += ", blank " + Plain(result.blank, result.blankDeviation) + " " + result.unit;
        if (result.dilution != 1) made += ", dilution " + TrimStr(result.dilution);
        if (result.uncertainty > 0) made += ", u " + Digits(result.uncertainty) + " " + result.unit;
        PrintLine(page, made, Indent);
        if (!result.words.empty()) PrintLine(page, result.words, Indent);
        for (const ResultRow& row : result.rows)
            if (!row.struck.empty())
                PrintLine(page, "row " + std::to_string(row.row) + " struck out: " + row.struck, Indent);
        if (result.budget.Parts().empty()) continue;
        const float y = page.CurrentY();
        page.Draw(BudgetBars(result.budget, {}), page.Width() / Scale, BarsHeight(result.budget));
        page.MoveTo(0, y + bars);
    }
}

}  // namespace kelvo
