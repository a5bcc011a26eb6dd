#include <algorithm>
#include <cmath>

#include "calibration/CaliGraph.h"
#include "calibration/CustomCharge.h"
#include "core/Messages.h"
#include "tables/PrintedPage.h"
#include "tables/QualityReport.h"
#include "tables/Reports.h"
#include "tables/TableFile.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr float HeadStep = 500;
constexpr float ReportTop = 400;
constexpr float PrinterShift = 500;
constexpr float GraphWidth = 10200, GraphHeight = 6700;
constexpr int DataField = 15;

std::string IonName(const AppState& state) {
    const bool known = state.IonIndex >= 0 && state.IonIndex < IonRows;
    return known ? state.Ions.names[static_cast<std::size_t>(state.IonIndex)] : std::string();
}

std::string Fields(std::initializer_list<std::string> cells) {
    std::string line;
    for (const std::string& cell : cells)
        line += Padded(cell, DataField);
    return line.substr(0, line.find_last_not_of(' ') + 1);
}

/// Prints a line, on a new page when the present one is full.
void PrintLine(PageWriter& page, const std::string& line) {
    if (page.CurrentY() + page.LineHeight() > page.Height()) {
        page.NewPage();
        page.MoveTo(0, ReportTop);
    }
    page.Print(line);
}

std::string PartialSlopeCell(const AppState& state, int i) {
    if (i < 2) return {};
    const auto at = static_cast<std::size_t>(i);
    const double decades = double{state.CaliLogC.at(at)} - state.CaliLogC.at(at - 1);
    if (decades == 0) return {};
    return Format((double{state.CaliE.at(at)} - state.CaliE.at(at - 1)) / decades, "00.00");
}

}  // namespace

const char* const GraphNotPrinted = "The graph could not be printed.";
const char* const DataNotPrinted = "Cannot print data, please check if the computer is connected to a printer.";

void PrintCalibration(const AppState& state, PageWriter& page) {
    page.FontSize(12);
    constexpr int HeadLines = 9;
    if (page.CurrentY() + HeadLines * HeadStep + 5 * page.LineHeight() > page.Height()) {
        page.NewPage();
        page.MoveTo(0, ReportTop);
    }
    const auto field = [&](const char* label, const std::string& value) { PrintField(page, label, value, HeadStep); };
    const std::string& celsius = state.FileTemp;
    page.Print(Rule(page, '='));
    field("Calibration Operator:", state.FileOperator);
    field("Calibration date and time:", state.FileDate);
    field("Reference Electrode:", state.FileRefElectrode[0] + " " + state.FileRefElectrode[1]);
    field("Electrode serial number:", state.FileElectrodeNum[0]);
    field("Total Slope:", Format(state.CaliSlope, "#0.00"));
    field("°C:", celsius);
    field("°F:",
          celsius.empty() ? std::string() : Format(CelsiusToFahrenheit(static_cast<float>(Val(celsius))), "#0.0"));
    field("Ion:", IonName(state));
    field("ISAB/Notes:", state.ISAB);
    PrintLine(page, {});
    PrintLine(page, "Calibration Data:");
    // Five fields of fifteen characters are wider than a page of this type is; the rows are set smaller.
    page.FontSize(10);
    PrintLine(page, Fields({"Number", "mV", "ppm", "LogC", "Partial Slope"}));
    for (int i = 1; i <= state.CaliPoints; ++i) {
        const auto at = static_cast<std::size_t>(i);
        PrintLine(page, Fields({TrimStr(i), Format(state.CaliE.at(at), "#0.0"), Format(state.CaliPpm.at(at), "0.00"),
                                Format(state.CaliLogC.at(at), "0.00"), PartialSlopeCell(state, i)}));
    }
    page.FontSize(12);
    PrintLine(page, Rule(page, '='));
}

void PrintPageHead(DisplayList& picture) {
    picture.xShift = PrinterShift;
    DrawFrame(picture);
}

void PrintCurve(const AppState& state, DisplayList& picture) {
    PlotPoints(state, picture);
    if (state.LinearFit == 1) DrawLine(state, picture, colour::Black);
    if (state.PartlyLinearFit == 1) DrawPartlyLinear(state, picture);
    if (state.BestFitCurve == 1) DrawBestCurve(state, picture);
}

void PrintAxes(const AppState& state, DisplayList& picture) {
    DrawAxes(state, picture, state.MvScaleIndex, state.LogCScaleIndex);
}

void PrintSamples(const AppState& state, DisplayList& picture) {
    // Drawing stores what it draws, so it draws into a copy.
    AppState drawn = state;
    drawn.SampleCount = 0;
    for (std::size_t i = 0; i < static_cast<std::size_t>(state.SampleCount); ++i)
        DrawSample(drawn, picture, state.SampleE[i], state.SampleLogC[i], colour::Red);
}

void PrintExperimentPoints(const AppState& state, int sample, const DateTime& now, PageWriter& page) {
    if (sample == 0) {
        page.FontSize(12);
        PrintField(page, "Operator Name:", state.Operator, HeadStep);
        PrintField(page, "Experiment date and time:", DateTimeText(now, state.DateFormat), HeadStep);
        page.FontSize(10);
        PrintLine(page, Fields({"Number", "mV", "LogC", "mol/L", "ppm"}));
    }
    page.FontSize(10);
    const auto at = static_cast<std::size_t>(sample);
    const double molar = std::pow(10.0, double{state.SampleLogC.at(at)});
    PrintLine(page, Fields({TrimStr(sample + 1), Format(state.SampleE.at(at), "#0.0"),
                            Format(state.SampleLogC.at(at), "#0.00"), Format(molar, "#.00E-0"),
                            Format(MolarToPpm(state.Ions, molar, state.IonIndex), "#0.00")}));
}

void PrintIseReport(const AppState& state, const DataTable& table, const Clock& clock, PageWriter& page, bool samples) {
    DisplayList picture;
    PrintPageHead(picture);
    PrintCurve(state, picture);
    if (samples) PrintSamples(state, picture);
    PrintAxes(state, picture);
    page.MoveTo(0, ReportTop);
    const float scale = std::min(1.0f, page.Width() / GraphWidth);
    page.Draw(picture, GraphWidth, GraphHeight);
    page.MoveTo(0, ReportTop + scale * GraphHeight + ReportTop / 2);
    if (samples)
        for (int i = 0; i < state.SampleCount; ++i)
            PrintExperimentPoints(state, i, clock.Now(), page);
    page.MoveTo(0, page.CurrentY() + ReportTop / 2);
    PrintCalibration(state, page);
    if (samples && table.Rows() > 2) {
        page.NewPage();
        PrintTable(state, table, page, ReportTop);
    }
    page.NewPage();
    page.MoveTo(0, ReportTop);
    PrintQuality(MakeQualityPage(state, ReadQualityLimits(state.IniPath), CustomCharge(state), false), page);
}

bool RunPrint(const AppState& state, Printing& printing, Prompts& prompts, const std::string& title,
              const char* failure, const std::function<void(PageWriter&)>& print) {
    if (state.NetworkPrinter == 0 && printing.PrinterReady(1) != 1) {
        prompts.Message(PrinterNotReady);
        return false;
    }
    std::string file;
    try {
        const std::unique_ptr<PageWriter> page = printing.Begin(title);
        if (page == nullptr) return false;
        file = page->FileName();
        print(*page);
        page->EndDocument();
        return true;
    } catch (const RuntimeError& error) {
        file.empty() ? prompts.Message(failure) : ShowFileError(prompts, error, "Saving", file);
        return false;
    }
}

bool PrintTableDocument(const AppState& state, const DataTable& table, Printing& printing, Prompts& prompts) {
    return RunPrint(state, printing, prompts, TableTitle(state), DataNotPrinted,
                    [&](PageWriter& page) { PrintTable(state, table, page, ReportTop); });
}

bool PrintGraph(const AppState& state, const DataTable& table, const Clock& clock, Printing& printing, Prompts& prompts,
                bool samples) {
    return RunPrint(state, printing, prompts, "ISE Calibration", GraphNotPrinted,
                    [&](PageWriter& page) { PrintIseReport(state, table, clock, page, samples); });
}

}  // namespace kelvo
