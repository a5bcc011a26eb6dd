#include "help/HelpTopics.h"

#include <algorithm>

#include "core/Navigation.h"
#include "core/StateOf.h"
#include "core/TableState.h"
#include "core/Tables.h"

namespace kelvo {
namespace {

constexpr int PhTopic = 7, NoStep = 0, ByMarks = -1;

const HelpSheetRow Nothing = {-1, NoStep, "", "", false, HelpPicture::Electrodes, "manual.md"};

struct ScreenTopic {
    ScreenCode screen;
    int topic;  ///< -1: the present one
    int step;   ///< ByMarks: as the marks of the paths say
};

/// Screens whose topic, or step, is certain.
constexpr ScreenTopic Topics[] = {
    {ScreenCode::frmsetup, 0, 1},      {ScreenCode::fmpaidat, 0, 1},       {ScreenCode::frmknosp, 0, 1},
    {ScreenCode::fmISEcli, -1, 2},     {ScreenCode::frmPtset, -1, 2},      {ScreenCode::frmStanad01, 2, NoStep},
    {ScreenCode::frmSampa, 3, NoStep}, {ScreenCode::frmselity, 4, NoStep}, {ScreenCode::frmcnvs, 5, NoStep},
    {ScreenCode::frmacft, 6, NoStep},  {ScreenCode::frmPset, PhTopic, 1},  {ScreenCode::frmDsply, PhTopic, 2},
    {ScreenCode::frmPHMe, PhTopic, 4}, {ScreenCode::frmQuality, 0, 2},     {ScreenCode::frmAdditions, -1, NoStep},
    {ScreenCode::frmStandards, 0, 2},  {ScreenCode::frmDrift, -1, 2},
};

constexpr int Calibration = 0, Potentiometry = 1, GraphStep = 2;

/// Screens that come in front of the calibration screen while its topic is still the calibration.
struct OverCalibration {
    ScreenCode screen;
    int topic;
};
constexpr OverCalibration OverCalibrations[] = {
    // They have to do with samples already.
    {ScreenCode::frmPtset, Potentiometry},   {ScreenCode::frmMsg, Potentiometry}, {ScreenCode::frmQSave, Potentiometry},
    {ScreenCode::frmResults, Potentiometry}, {ScreenCode::frmAutoD, Calibration},
};

const char* DocumentOf(const Navigation& state, ScreenCode from) {
    if (from == ScreenCode::frmHware || from == ScreenCode::frmPortSettings) return "Hware.TXT";
    if (from != ScreenCode::frmenu || state.MenuBranch > 1) return "";
    return state.MenuBranch == 0 ? "PHINTRO.TXT" : "ISEINTRO.TXT";
}

}  // namespace

const std::vector<HelpSheetRow>& HelpSheets() {
    static const std::vector<HelpSheetRow> rows = {
        {0, 1, "Calibration: the setup", "info0.txt", false, HelpPicture::Electrodes, "manual.md#calibrating-an-ise"},
        {0, 2, "Calibration: the graph", "info0.txt", false, HelpPicture::Line, "manual.md#the-calibration-screen"},
        {1, 0, "Direct Potentiometry", "info1.txt", true, HelpPicture::Meter, "manual.md#measuring-samples"},
        {2, 0, "Standard Addition", "info2.txt", false, HelpPicture::Addition, "manual-additions.md"},
        {3, 0, "Sample Addition", "info3.txt", false, HelpPicture::Addition, "manual-additions.md"},
        {4, 0, "Selectivity", "info4.txt", false, HelpPicture::Membrane, "manual-utilities.md#ise-selectivity"},
        {5, 0, "Conversion and Dilution", "info5.txt", true, HelpPicture::Flask,
         "manual-utilities.md#conversion-dilution"},
        {6, 0, "Activity Coefficients", "info6.txt", true, HelpPicture::Ions,
         "manual-utilities.md#activity-coefficients"},
        {PhTopic, 0, "pH Measurement", "", false, HelpPicture::Glass, "manual-ph.md"},
        {PhTopic, 1, "pH: calibration", "info7.txt", false, HelpPicture::Buffers, "manual-ph.md"},
        {PhTopic, 2, "pH: measurement and care of electrodes", "info8.txt", true, HelpPicture::Glass, "manual-ph.md"},
        {PhTopic, 3, "Continuous recording: the setup", "info9.txt", false, HelpPicture::Trace, "manual-recording.md"},
        {PhTopic, 4, "Continuous recording: the run", "info10.txt", false, HelpPicture::Trace, "manual-recording.md"},
    };
    return rows;
}

const std::vector<HelpDocument>& HelpDocuments() {
    static const std::vector<HelpDocument> documents = {
        {"ISEINTRO.TXT", "Introduction to ISE measurement", HelpPicture::Electrodes, "manual.md#calibrating-an-ise"},
        {"PHINTRO.TXT", "Introduction to pH measurement", HelpPicture::Glass, "manual-ph.md"},
        {"Hware.TXT", "Hardware Setup", HelpPicture::Interface, "manual.md#hardware-setup"},
    };
    return documents;
}

const HelpSheetRow& FindHelpSheet(int topic, int step) {
    const auto find = [&](int wanted) {
        return std::find_if(HelpSheets().begin(), HelpSheets().end(),
                            [&](const HelpSheetRow& row) { return row.topic == topic && row.step == wanted; });
    };
    // The calibration has no sheet without a step: its setup comes first.
    auto row = find(step);
    if (row == HelpSheets().end()) row = find(topic == 0 ? 1 : NoStep);
    return row == HelpSheets().end() ? Nothing : *row;
}

const HelpDocument* FindHelpDocument(const std::string& file) {
    for (const HelpDocument& document : HelpDocuments())
        if (document.file == file) return &document;
    return nullptr;
}

int PresentHelpStep(const Navigation& state) {
    if (state.HelpTopic == 0) return state.IsePath[2] != 0 ? 2 : 1;
    if (state.HelpTopic != PhTopic) return NoStep;
    for (std::size_t step = 4; step >= 1; --step)
        if (state.PhPath[step] != 0) return static_cast<int>(step);
    return NoStep;
}

std::string HelpCaption(int topic) {
    std::string caption = HelpHeading;
    if (topic >= 0 && topic <= PhTopic) caption += HelpTitles()[static_cast<std::size_t>(topic)];
    return caption;
}

bool RequestHelp(StateOf<Navigation, TableState> state, ScreenCode from) {
    Navigation& navigation = state;
    TableState& tableState = state;
    navigation.HelpFile = DocumentOf(state, from);
    navigation.HelpStep = ByMarks;
    if (!navigation.HelpFile.empty()) return true;
    if (from == ScreenCode::frmtxt || from == ScreenCode::frmNorvak || from == ScreenCode::frmenu) return false;
    for (const ScreenTopic& row : Topics) {
        if (row.screen != from) continue;
        if (row.topic >= 0) navigation.HelpTopic = static_cast<std::int16_t>(row.topic);
        navigation.HelpStep = row.step;
    }
    // Samples are measured on the screen of the calibration: from then on it is the other topic.
    if (from == ScreenCode::fmISEcli && tableState.TableOpen == 1) navigation.HelpTopic = 1;
    for (const OverCalibration& row : OverCalibrations) {
        if (row.screen != from || navigation.HelpTopic != Calibration) continue;
        navigation.HelpTopic = static_cast<std::int16_t>(row.topic);
        navigation.HelpStep = GraphStep;
    }
    // The setup of a recording drops its mark when its second stage begins.
    if (from == ScreenCode::frmPHSe) {
        navigation.HelpTopic = PhTopic;
        navigation.HelpStep = navigation.PhPath[1] != 0 ? 1 : 3;
    }
    return true;
}

}  // namespace kelvo
