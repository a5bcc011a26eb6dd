#include <algorithm>
#include <cmath>

#include "calibration/CaliGraph.h"
#include "calibration/Calibration.h"
#include "calibration/CalibrationState.h"
#include "calibration/LowEndWords.h"
#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/HardwareSettings.h"
#include "core/Messages.h"
#include "core/StateOf.h"
#include "core/StatusMessages.h"
#include "core/TableState.h"
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

std::string PartialSlopeCell(const Calibration& calibration, std::size_t i) {
    const std::optional<double> slope = i > 0 ? calibration.SegmentSlope(i) : std::nullopt;
    return slope ? Format(*slope, "00.00") : std::string();
}

}  // namespace

const char* const GraphNotPrinted = "The graph could not be printed.";
const char* const DataNotPrinted = "Cannot print data, please check if the computer is connected to a printer.";

void PrintCalibration(const Calibration& calibration, const std::string& notes, Sheets& page) {
    page.FontSize(12);
    constexpr int HeadLines = 9;
    if (page.CurrentY() + HeadLines * HeadStep + 5 * page.LineHeight() > page.Height()) {
        page.NewPage();
        page.FontSize(12);
    }
    const auto field = [&](const char* label, const std::string& value) { PrintField(page, label, value, HeadStep); };
    const std::string& celsius = calibration.celsius;
    page.Print(Rule(page, '='));
    field("Calibration Operator:", calibration.operatorName);
    field("Calibration date and time:", calibration.date);
    field("Reference Electrode:", calibration.reference[0] + " " + calibration.reference[1]);
    field("Electrode serial number:", calibration.electrode);
    field("Total Slope:", Format(calibration.slope, "#0.00"));
    field("°C:", celsius);
    field("°F:", FahrenheitCell(celsius));
    field("Ion:", calibration.ionName);
    field("ISAB/Notes:", notes);
    PrintLine(page, {});
    PrintLine(page, "Calibration Data:");
    // Five fields of fifteen characters are wider than a page of this type is; the rows are set smaller.
    page.FontSize(10);
    const std::string heads = Fields({"Number", "mV", "ppm", "LogC", "Partial Slope"});
    PrintLine(page, heads);
    for (std::size_t i = 0; i < calibration.points.size(); ++i) {
        const CalibrationPoint& point = calibration.points[i];
        PrintLine(page,
                  Fields({TrimStr(static_cast<int>(i) + 1), Format(point.mv, "#0.0"), Format(point.ppm, "0.00"),
                          Format(point.logC, "0.00"), PartialSlopeCell(calibration, i)}),
                  heads);
    }
    for (const std::string& line : LowEndLines(calibration))
        PrintLine(page, line);
    page.FontSize(12);
    PrintLine(page, Rule(page, '='));
    const std::string doubt = calibration.Doubt();
    if (doubt.empty()) return;
    page.FontSize(10);
    for (const std::string& line : Wrapped("C" + doubt.substr(1), Capacity(page)))
        PrintLine(page, line);
}

void PrintPageHead(DisplayList& list) {
    list.xShift = PrinterShift;
    DrawFrame(list);
}

void PrintCurve(const CalibrationState& state, DisplayList& list) {
    PlotPoints(state, list);
    if (state.LinearFit == 1) DrawLine(state, list, colour::Black);
    if (state.PartlyLinearFit == 1) DrawPartlyLinear(state, list);
    if (state.BestFitCurve == 1) DrawBestCurve(state, list);
    if (state.LowEndCurve != 1) return;
    if (const auto fit = CalibrationOf(state).quality.lowEnd) DrawLowEnd(state, list, *fit);
}

void PrintAxes(const CalibrationState& state, DisplayList& list) {
    DrawAxes(state, list, state.MvScaleIndex, state.LogCScaleIndex);
}

void PrintSamples(const CalibrationState& state, DisplayList& list) {
    // Drawing stores what it draws, so it draws into a copy.
    CalibrationState drawn = state;
    drawn.SampleCount = 0;
    for (std::size_t i = 0; i < static_cast<std::size_t>(state.SampleCount); ++i)
        DrawSample(drawn, list, state.SampleE[i], state.SampleLogC[i], colour::Red);
}

void PrintExperimentPoints(StateOf<const CalibrationState, const HardwareSettings> state, int sample,
                           const DateTime& now, Sheets& page) {
    const CalibrationState& calibration = state;
    const HardwareSettings& hardware = state;
    const std::string heads = Fields({"Number", "mV", "LogC", "mol/L", "ppm"});
    if (sample == 0) {
        page.FontSize(12);
        PrintField(page, "Operator Name:", hardware.Operator, HeadStep);
        PrintField(page, "Experiment date and time:", DateTimeText(now, hardware.DateFormat), HeadStep);
        page.FontSize(10);
        PrintLine(page, heads);
    }
    page.FontSize(10);
    const auto at = static_cast<std::size_t>(sample);
    const double molar = std::pow(10.0, double{calibration.SampleLogC.at(at)});
    PrintLine(page,
              Fields({TrimStr(sample + 1), Format(calibration.SampleE.at(at), "#0.0"),
                      Format(calibration.SampleLogC.at(at), "#0.00"), Format(molar, "#.00E-0"),
                      Format(MolarToPpm(calibration.Ions, molar, calibration.IonIndex), "#0.00")}),
              heads);
}

void PrintIseReport(StateOf<const CalibrationState, const Navigation, const HardwareSettings> state,
                    const Calibration& calibration, const DataTable& table, const Clock& clock, Sheets& page,
                    bool samples) {
    const CalibrationState& drawn = state;
    const HardwareSettings& hardware = state;
    DisplayList list;
    PrintPageHead(list);
    PrintCurve(drawn, list);
    if (samples) PrintSamples(drawn, list);
    PrintAxes(drawn, list);
    const float top = page.CurrentY(), scale = std::min(1.0f, page.Width() / GraphWidth);
    page.Draw(list, GraphWidth, GraphHeight);
    page.MoveTo(0, top + scale * GraphHeight + Gap);
    if (const std::string outside = ScaleRemark(drawn); !outside.empty()) {
        page.FontSize(10);
        for (const std::string& line : Wrapped(outside, Capacity(page)))
            PrintLine(page, line);
    }
    if (samples)
        for (int i = 0; i < drawn.SampleCount; ++i)
            PrintExperimentPoints({drawn, hardware}, i, clock.Now(), page);
    page.MoveTo(0, page.CurrentY() + Gap);
    PrintCalibration(calibration, hardware.ISAB, page);
    if (samples && ExportRows(table) > 0) {
        page.NewPage();
        PrintTable(state, table, page);
    }
    page.NewPage();
    PrintQuality(MakeQualityPage(calibration, false), page);
    PrintSignature(page);
}

namespace {

constexpr const char* NoFile = "not saved in a file";

}  // namespace

std::string TableFileOf(const TableState& tableState, const DataTable& table, bool working) {
    const std::string& name = working && tableState.HasTableFile() ? tableState.TableFile : table.FileName;
    return name.empty() ? NoFile : LastPart(name);
}

std::string CalibrationFileOf(const std::string& name) {
    return name.empty() ? NoFile : name;
}

bool RunPrint(StateOf<const HardwareSettings, StatusMessages> state, const PrintServices& services,
              const std::string& title, const std::string& file, const char* failure,
              const std::function<void(Sheets&)>& print) {
    const HardwareSettings& hardware = state;
    StatusMessages& status = state;
    Prompts& prompts = services.prompts;
    if (hardware.NetworkPrinter == 0 && services.printing.PrinterReady(1) != 1) {
        prompts.Message(PrinterNotReady);
        return false;
    }
    std::string pdf;
    try {
        const std::unique_ptr<PageWriter> paper = services.printing.Begin(title);
        if (paper == nullptr) return false;
        pdf = paper->FileName();
        const SheetHead head{title, "File: " + file, DateTimeText(services.clock.Now(), hardware.DateFormat)};
        Sheets counter(*paper, head, 0, services.progress);
        print(counter);
        const int total = counter.Number();
        if (total > ManySheets && !prompts.Ask("This report has " + TrimStr(total) + " sheets. Print them all?", true))
            return false;
        Sheets sheets(*paper, head, total, services.progress);
        print(sheets);
        sheets.EndDocument();
        if (!pdf.empty()) status.StatusMessage = "Printed to " + pdf + ".";
        return true;
    } catch (const PrintCancelled&) {
        status.StatusMessage = "The print was cancelled.";
    } catch (const RuntimeError& error) {
        pdf.empty() ? prompts.Message(failure) : ShowFileError(prompts, error, "Saving", pdf);
    }
    return false;
}

bool PrintTableDocument(StateOf<const Navigation, const TableState, const HardwareSettings, StatusMessages> state,
                        const DataTable& table, bool working, const PrintServices& services) {
    return RunPrint(state, services, TableTitle(state), TableFileOf(state, table, working), DataNotPrinted,
                    [&](Sheets& page) {
                        PrintTable(state, table, page);
                        PrintSignature(page);
                    });
}

bool PrintGraph(
    StateOf<const CalibrationState, const Navigation, const TableState, const HardwareSettings, StatusMessages> state,
    const Calibration& calibration, const DataTable& table, const PrintServices& services, bool samples) {
    std::string file = CalibrationFileOf(calibration.file);
    if (samples) file = TableFileOf(state, table, true) + ", calibration: " + file;
    return RunPrint(state, services, "ISE Calibration", file, GraphNotPrinted,
                    [&](Sheets& page) { PrintIseReport(state, calibration, table, services.clock, page, samples); });
}

}  // namespace kelvo
