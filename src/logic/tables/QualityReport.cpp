#include "tables/QualityReport.h"

#include <algorithm>
#include <numeric>

#include "calibration/IseCalibration.h"
#include "core/StateOf.h"
#include "tables/PrintedPage.h"
#include "tables/Reports.h"

namespace kelvo {
namespace {

constexpr float Gap = 200;
constexpr float PlotWidth = 9400, PlotHeight = 6700;
constexpr float TextSize = 10, FigureSize = 9, LargestRow = 9, SmallestRow = 6, TitleSize = 18;
constexpr int NameField = 29, ValueField = 28;

void NeedRoom(Sheets& writer, float height) {
    if (writer.CurrentY() + height <= writer.Height()) return;
    writer.NewPage();
}

void PrintLines(Sheets& writer, const std::string& text) {
    for (const std::string& line : Wrapped(text, Capacity(writer))) {
        NeedRoom(writer, writer.LineHeight());
        writer.Print(line);
    }
}

/// Cells under one another, as wide as the widest of each column needs.
void PrintPoints(Sheets& writer, const QualityPage& page) {
    std::vector<int> widths;
    for (std::size_t col = 0; col < page.heads.size(); ++col) {
        int width = Characters(page.heads[col]);
        for (const auto& row : page.rows)
            width = std::max(width, Characters(row[col]));
        widths.push_back(width + 2);
    }
    const int wide = std::accumulate(widths.begin(), widths.end(), 0);
    for (float size = LargestRow; size >= SmallestRow; size -= 1) {
        writer.FontSize(size);
        if (Capacity(writer) >= wide) break;
    }
    const auto print = [&](const std::vector<std::string>& cells) {
        std::string line;
        for (std::size_t col = 0; col < cells.size(); ++col)
            line += Padded(cells[col], widths[col]);
        PrintLines(writer, line.substr(0, line.find_last_not_of(' ') + 1));
    };
    NeedRoom(writer, 2 * writer.LineHeight());
    print(page.heads);
    for (const auto& row : page.rows) {
        const int sheet = writer.Number();
        NeedRoom(writer, writer.LineHeight());
        if (writer.Number() > sheet) print(page.heads);
        print(row);
    }
}

/// By how much the picture is made smaller, so that the table of points and the signature below it stay on its page.
float PlotScale(Sheets& writer, std::size_t lines) {
    constexpr float Readable = 0.6f, SignatureSize = 12, SignatureLines = 4;
    const float widest = std::min(1.0f, writer.Width() / PlotWidth);
    writer.FontSize(SignatureSize);
    float below = SignatureLines * writer.LineHeight() + Gap;
    writer.FontSize(LargestRow);
    below += static_cast<float>(lines) * writer.LineHeight();
    writer.FontSize(TextSize);
    const float room = writer.Height() - writer.CurrentY() - below;
    return std::clamp(room / PlotHeight, Readable * widest, widest);
}

/// Name, value and what it rests on, which goes on below itself.
void PrintFigure(Sheets& writer, const QualityPage::Figure& figure) {
    std::string fields = Padded(figure.name, NameField) + Padded(figure.value, ValueField) + " ";
    const int room = std::max(1, Capacity(writer) - Characters(fields));
    std::vector<std::string> beside = Wrapped(figure.beside, room);
    if (beside.empty()) beside.emplace_back();
    for (const std::string& piece : beside) {
        const std::string line = fields + piece;
        NeedRoom(writer, writer.LineHeight());
        writer.Print(line.substr(0, line.find_last_not_of(' ') + 1));
        fields.assign(static_cast<std::size_t>(Characters(fields)), ' ');
    }
}

}  // namespace

void PrintQuality(const QualityPage& page, Sheets& writer) {
    writer.FontSize(TitleSize);
    writer.Print("Calibration Quality");
    writer.FontSize(TextSize);
    PrintLines(writer, page.verdict.Line());
    std::string causes;
    for (const std::string& cause : page.verdict.causes)
        causes += (causes.empty() ? "Usual causes: " : "; ") + cause;
    if (!causes.empty()) PrintLines(writer, causes);
    PrintLines(writer, "What to do: " + page.verdict.next);
    writer.Print(Rule(writer, '='));
    writer.FontSize(FigureSize);
    for (const QualityPage::Figure& figure : page.figures)
        PrintFigure(writer, figure);
    writer.FontSize(TextSize);
    writer.Print(Rule(writer, '='));
    if (!page.plot.Empty()) {
        const float scale = PlotScale(writer, page.rows.size() + 1);
        NeedRoom(writer, scale * PlotHeight);
        const float y = writer.CurrentY();
        // A surface wider than the picture leaves room at its right and is drawn smaller for it.
        writer.Draw(page.plot, writer.Width() / scale, PlotHeight);
        writer.MoveTo(0, y + scale * PlotHeight + Gap);
    }
    if (!page.rows.empty()) PrintPoints(writer, page);
}

bool PrintQualityDocument(StateOf<const IseCalibration, const HardwareSettings, StatusMessages> state,
                          const QualityPage& page, const PrintServices& services) {
    return RunPrint(state, services, "Calibration Quality",
                    CalibrationFileOf(state.Get<const IseCalibration>().CaliFileName), GraphNotPrinted,
                    [&](Sheets& writer) {
                        PrintQuality(page, writer);
                        PrintSignature(writer);
                    });
}

}  // namespace kelvo
