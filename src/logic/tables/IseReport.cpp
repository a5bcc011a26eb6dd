#include <algorithm>
#include <cmath>

#include "calibration/CaliGraph.h"
#include "calibration/CustomCharge.h"
#include "calibration/SampleUncertainty.h"
#include "core/Messages.h"
#include "tables/PrintedPage.h"
#include "tables/QualityReport.h"
#include "tables/Reports.h"
#include "tables/TableExport.h"
#include "tables/TableFile.h"
#include "tables/TableGrids.h"
#include "text/Files.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr float HeadStep = 500;
constexpr float Gap = 200;
constexpr int ManySheets = 50;
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

/// Prints a line, on a new sheet when the present one is full; a list that goes on there begins with its heads again.
void PrintLine(Sheets& page, const std::string& line, const std::string& heads = {}) {
    if (page.CurrentY() + page.LineHeight() > page.Height()) {
        page.NewPage();
        if (!heads.empty()) page.Print(heads);
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

void PrintCalibration(const AppState& state, Sheets& page) {
    page.FontSize(12);
    constexpr int HeadLines = 9;
    if (page.CurrentY() + HeadLines * HeadStep + 5 * page.LineHeight() > page.Height()) {
        page.NewPage();
        page.FontSize(12);
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
    field("°F:", FahrenheitText(celsius));
    field("Ion:", IonName(state));
    field("ISAB/Notes:", state.ISAB);
    PrintLine(page, {});
    PrintLine(page, "Calibration Data:");
    // Five fields of fifteen characters are wider than a page of this type is; the rows are set smaller.
    page.FontSize(10);
    const std::string heads = Fields({"Number", "mV", "ppm", "LogC", "Partial Slope"});
    PrintLine(page, heads);
    for (int i = 1; i <= state.CaliPoints; ++i) {
        const auto at = static_cast<std::size_t>(i);
        PrintLine(page,
                  Fields({TrimStr(i), Format(state.CaliE.at(at), "#0.0"), Format(state.CaliPpm.at(at), "0.00"),
                          Format(state.CaliLogC.at(at), "0.00"), PartialSlopeCell(state, i)}),
                  heads);
    }
    page.FontSize(12);
    PrintLine(page, Rule(page, '='));
    const std::string doubt = DoubtOf(state, ReadQualityLimits(state.IniPath));
    if (doubt.empty()) return;
    page.FontSize(10);
    for (const std::string& line : Wrapped("C" + doubt.substr(1), Capacity(page)))
        PrintLine(page, line);
}

void PrintPageHead(DisplayList& list) {
    list.xShift = PrinterShift;
    DrawFrame(list);
}

void PrintCurve(const AppState& state, DisplayList& list) {
    PlotPoints(state, list);
    if (state.LinearFit == 1) DrawLine(state, list, colour::Black);
    if (state.PartlyLinearFit == 1) DrawPartlyLinear(state, list);
    if (state.BestFitCurve == 1) DrawBestCurve(state, list);
}

void PrintAxes(const AppState& state, DisplayList& list) {
    DrawAxes(state, list, state.MvScaleIndex, state.LogCScaleIndex);
}

void PrintSamples(const AppState& state, DisplayList& list) {
    // Drawing stores what it draws, so it draws into a copy.
    AppState drawn = state;
    drawn.SampleCount = 0;
    for (std::size_t i = 0; i < static_cast<std::size_t>(state.SampleCount); ++i)
        DrawSample(drawn, list, state.SampleE[i], state.SampleLogC[i], colour::Red);
}

void PrintExperimentPoints(const AppState& state, int sample, const DateTime& now, Sheets& page) {
    const std::string heads = Fields({"Number", "mV", "LogC", "mol/L", "ppm"});
    if (sample == 0) {
        page.FontSize(12);
        PrintField(page, "Operator Name:", state.Operator, HeadStep);
        PrintField(page, "Experiment date and time:", DateTimeText(now, state.DateFormat), HeadStep);
        page.FontSize(10);
        PrintLine(page, heads);
    }
    page.FontSize(10);
    const auto at = static_cast<std::size_t>(sample);
    const double molar = std::pow(10.0, double{state.SampleLogC.at(at)});
    PrintLine(
        page,
        Fields({TrimStr(sample + 1), Format(state.SampleE.at(at), "#0.0"), Format(state.SampleLogC.at(at), "#0.00"),
                Format(molar, "#.00E-0"), Format(MolarToPpm(state.Ions, molar, state.IonIndex), "#0.00")}),
        heads);
}

void PrintIseReport(const AppState& state, const DataTable& table, const Clock& clock, Sheets& page, bool samples) {
    DisplayList list;
    PrintPageHead(list);
    PrintCurve(state, list);
    if (samples) PrintSamples(state, list);
    PrintAxes(state, list);
    const float top = page.CurrentY(), scale = std::min(1.0f, page.Width() / GraphWidth);
    page.Draw(list, GraphWidth, GraphHeight);
    page.MoveTo(0, top + scale * GraphHeight + Gap);
    if (const std::string outside = ScaleRemark(state); !outside.empty()) {
        page.FontSize(10);
        for (const std::string& line : Wrapped(outside, Capacity(page)))
            PrintLine(page, line);
    }
    if (samples)
        for (int i = 0; i < state.SampleCount; ++i)
            PrintExperimentPoints(state, i, clock.Now(), page);
    page.MoveTo(0, page.CurrentY() + Gap);
    PrintCalibration(state, page);
    if (samples && ExportRows(table) > 0) {
        page.NewPage();
        PrintTable(state, table, page);
    }
    page.NewPage();
    PrintQuality(MakeQualityPage(state, ReadQualityLimits(state.IniPath), CustomCharge(state), false), page);
    PrintSignature(page);
}

namespace {

constexpr const char* NoFile = "not saved in a file";

}  // namespace

std::string TableFileOf(const AppState& state, const DataTable& table, bool working) {
    const std::string& name = working && state.HasTableFile() ? state.TableFile : table.FileName;
    return name.empty() ? NoFile : LastPart(name);
}

std::string CalibrationFileOf(const AppState& state) {
    return state.CaliFileName.empty() ? NoFile : state.CaliFileName;
}

bool RunPrint(AppState& state, const PrintServices& services, const std::string& title, const std::string& file,
              const char* failure, const std::function<void(Sheets&)>& print) {
    Prompts& prompts = services.prompts;
    if (state.NetworkPrinter == 0 && services.printing.PrinterReady(1) != 1) {
        prompts.Message(PrinterNotReady);
        return false;
    }
    std::string pdf;
    try {
        const std::unique_ptr<PageWriter> paper = services.printing.Begin(title);
        if (paper == nullptr) return false;
        pdf = paper->FileName();
        const SheetHead head{title, "File: " + file, DateTimeText(services.clock.Now(), state.DateFormat)};
        Sheets counter(*paper, head, 0, services.progress);
        print(counter);
        const int total = counter.Number();
        if (total > ManySheets && !prompts.Ask("This report has " + TrimStr(total) + " sheets. Print them all?", true))
            return false;
        Sheets sheets(*paper, head, total, services.progress);
        print(sheets);
        sheets.EndDocument();
        if (!pdf.empty()) state.StatusMessage = "Printed to " + pdf + ".";
        return true;
    } catch (const PrintCancelled&) {
        state.StatusMessage = "The print was cancelled.";
    } catch (const RuntimeError& error) {
        pdf.empty() ? prompts.Message(failure) : ShowFileError(prompts, error, "Saving", pdf);
    }
    return false;
}

bool PrintTableDocument(AppState& state, const DataTable& table, bool working, const PrintServices& services) {
    return RunPrint(state, services, TableTitle(state), TableFileOf(state, table, working), DataNotPrinted,
                    [&](Sheets& page) {
                        PrintTable(state, table, page);
                        PrintSignature(page);
                    });
}

bool PrintGraph(AppState& state, const DataTable& table, const PrintServices& services, bool samples) {
    std::string file = CalibrationFileOf(state);
    if (samples) file = TableFileOf(state, table, true) + ", calibration: " + file;
    return RunPrint(state, services, "ISE Calibration", file, GraphNotPrinted,
                    [&](Sheets& page) { PrintIseReport(state, table, services.clock, page, samples); });
}

}  // namespace kelvo
