#include "help/HelpTopics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <set>

#include "help/HelpTexts.h"
#include "help/Illustrations.h"

namespace kelvo {
namespace {

struct Sheet {
    const char* name;
    int topic, step;
    std::size_t lines;
    const char* file;
    bool second;
    const char* begins;
    const char* holds;
};

/// Every topic and state: how many lines it has, its note file, whether it goes on, how it begins.
TEST(HelpTopics, TopicStateLinesAndFile) {
    constexpr const char* Entry = "Please complete all the boxes provided, and remember to press Enter after";
    constexpr Sheet Rows[] = {
        {"calibration setup", 0, 1, 11, "info0.txt", false,
         "Please enter the various parameters required for the calibration graph.  Either accept the default", ""},
        {"calibration without a mark", 0, 0, 11, "info0.txt", false, "Please enter the various parameters", ""},
        {"calibration graph", 0, 2, 11, "info0.txt", false,
         "When you have an acceptable Calibration graph, please click on Potentiometry to start to measure", ""},
        {"potentiometry", 1, 0, 19, "info1.txt", true,
         "The Potentiometry/Measurement screen is the main working area for ISE measurements. Once a calibration", ""},
        {"standard addition", 2, 0, 11, "info2.txt", false, Entry, "Avoid adding less than 10% of the sample volume."},
        {"standard addition, why", 2, 0, 11, "info2.txt", false, Entry,
         "The dilution effect of the standard added to the sample is necessary for good precision."},
        {"standard addition, on line", 2, 3, 11, "info2.txt", false, Entry,
         "on the on-line box to read in the on-line data (when an interface is connected), or click on"},
        {"sample addition", 3, 0, 11, "info3.txt", false, Entry,
         "any appropriate box to change any of the data before measuring"},
        {"selectivity", 4, 0, 11, "info4.txt", false,
         "Select the ion in which you are interested and type in an expected / arbitrary ppm value", ""},
        {"conversion", 5, 0, 21, "info5.txt", true, "To convert from ppm to moles, or vice verce, please select a", ""},
        {"activity", 6, 0, 19, "info6.txt", true, "Select an ion from the 'ion box' and type in an estimate of ", ""},
        {"pH without a mark", 7, 0, 0, "", false, "", ""},
        {"pH calibration", 7, 1, 12, "info7.txt", false, "For 2 channel interfaces, you have the option to connect and",
         ""},
        {"pH display", 7, 2, 36, "info8.txt", true, "", "Testing of pH Electrodes"},
        {"pH display, storage", 7, 2, 36, "info8.txt", true, "", "Storage of Combination Electrodes"},
        {"recording setup", 7, 3, 7, "info9.txt", false,
         "Please select your options for the various parameters to set up your continuous recording", ""},
        {"recording", 7, 4, 7, "info10.txt", false,
         "Select the Options menu to view the data table, or to change the pH scale or the number of", ""},
        {"a topic that does not exist", 8, 1, 0, "", false, "", ""},
        {"a topic below 0", -1, 0, 0, "", false, "", ""},
    };
    for (const Sheet& row : Rows) {
        SCOPED_TRACE(row.name);
        const auto& lines = HelpLines(row.topic, row.step);
        EXPECT_EQ(lines.size(), row.lines);
        EXPECT_STREQ(FindHelpSheet(row.topic, row.step).note, row.file);
        EXPECT_EQ(FindHelpSheet(row.topic, row.step).second, row.second);
        const std::string first = lines.empty() ? "" : lines[0].text;
        EXPECT_TRUE(first.starts_with(row.begins)) << first;
        bool found = row.holds[0] == '\0';
        for (const HelpLine& line : lines)
            found = found || std::string(line.text) == row.holds;
        EXPECT_TRUE(found) << row.holds;
    }
    // Line 11 of the long lists stands on neither sheet.
    EXPECT_STREQ(HelpLines(7, 1)[11].text, "");
    EXPECT_STREQ(HelpLines(7, 2)[11].text, "");
}

TEST(HelpTopics, SampleAdditionHasBlanksForTheTenPerCent) {
    for (std::size_t i = 0; i < 11; ++i)
        EXPECT_STREQ(HelpLines(3, 0)[i].text, i == 2 || i == 3 ? "" : HelpLines(2, 0)[i].text) << i;
}

TEST(HelpTopics, CaptionIsHeadingAndTitle) {
    EXPECT_EQ(HelpCaption(2), "  Help Sheet and Note padStandard Addtion");
    EXPECT_EQ(HelpCaption(7), "  Help Sheet and Note padpH Measurement");
    EXPECT_EQ(HelpCaption(0), "  Help Sheet and Note padCalibration");
    EXPECT_EQ(HelpCaption(8), "  Help Sheet and Note pad");
    EXPECT_EQ(HelpCaption(-1), "  Help Sheet and Note pad");
}

TEST(HelpTopics, StepIsTheLatestMarkOfThePath) {
    struct Row {
        int topic;
        std::array<std::int16_t, 3> ise;
        std::array<std::int16_t, 5> ph;
        int step;
    };
    constexpr Row Rows[] = {
        {0, {0, 0, 0}, {0, 1, 1, 1, 1}, 1}, {0, {0, 1, 0}, {}, 1},       {0, {0, 1, 1}, {}, 2},
        {1, {0, 1, 1}, {0, 1, 0, 0, 0}, 0}, {7, {0, 1, 1}, {}, 0},       {7, {}, {1, 0, 0, 0, 0}, 0},
        {7, {}, {0, 1, 0, 0, 0}, 1},        {7, {}, {0, 0, 1, 0, 0}, 2}, {7, {}, {0, 0, 0, 1, 0}, 3},
        {7, {}, {0, 0, 0, 1, 1}, 4},        {7, {}, {0, 1, 1, 0, 0}, 2},
    };
    for (const Row& row : Rows) {
        AppState state;
        state.HelpTopic = static_cast<std::int16_t>(row.topic);
        state.IsePath = row.ise;
        state.PhPath = row.ph;
        EXPECT_EQ(PresentHelpStep(state), row.step) << row.topic << ' ' << row.ise[2] << row.ph[1] << row.ph[4];
    }
}

struct Request {
    ScreenCode from;
    int branch, topicBefore;
    std::int16_t phCalibration;
    bool answered;
    int topic, step;
    const char* file;
};

/// What "Notes" and F1 lead to from each screen, whatever a dialog left as the topic.
TEST(HelpTopics, EveryScreenLeadsToItsSheet) {
    using enum ScreenCode;
    constexpr Request Rows[] = {
        {frmsetup, 1, 5, 0, true, 0, 1, ""},
        {fmpaidat, 1, 5, 0, true, 0, 1, ""},
        {frmknosp, 1, 2, 0, true, 0, 1, ""},
        {fmISEcli, 1, 0, 0, true, 0, 2, ""},
        {fmISEcli, 1, 1, 0, true, 1, 2, ""},
        {frmPtset, 1, 1, 0, true, 1, 2, ""},
        {frmPtset, 1, 0, 0, true, 1, 2, ""},
        {frmMsg, 1, 0, 0, true, 1, 2, ""},
        {frmMsg, 1, 2, 0, true, 2, -1, ""},
        {frmQSave, 1, 0, 0, true, 1, 2, ""},
        {frmQuality, 1, 0, 0, true, 0, 2, ""},
        {frmQuality, 1, 1, 0, true, 0, 2, ""},
        {frmAutoD, 1, 0, 0, true, 0, 2, ""},
        {frmAutoD, 0, 7, 0, true, 7, -1, ""},
        {frmPtset, 1, 3, 0, true, 3, 2, ""},
        {frmStanad01, 1, 0, 0, true, 2, 0, ""},
        {frmSampa, 1, 0, 0, true, 3, 0, ""},
        {frmselity, 2, 7, 0, true, 4, 0, ""},
        {frmcnvs, 2, 7, 0, true, 5, 0, ""},
        {frmacft, 2, 7, 0, true, 6, 0, ""},
        {frmPHSe, 0, 7, 1, true, 7, 1, ""},
        {frmPHSe, 0, 7, 0, true, 7, 3, ""},
        {frmPset, 0, 7, 0, true, 7, 1, ""},
        {frmDsply, 0, 7, 0, true, 7, 2, ""},
        {frmPHMe, 1, 0, 0, true, 7, 4, ""},
        {frmQSave, 1, 2, 0, true, 2, -1, ""},
        {frmHware, 1, 5, 0, true, 5, -1, "Hware.TXT"},
        {frmPortSettings, 1, 5, 0, true, 5, -1, "Hware.TXT"},
        {frmenu, 0, 5, 0, true, 5, -1, "PHINTRO.TXT"},
        {frmenu, 1, 5, 0, true, 5, -1, "ISEINTRO.TXT"},
        {frmenu, 2, 5, 0, false, 5, -1, ""},
        {frmtxt, 1, 5, 0, false, 5, -1, ""},
        {frmNorvak, 1, 5, 0, false, 5, -1, ""},
    };
    for (const Request& row : Rows) {
        SCOPED_TRACE(static_cast<int>(row.from));
        AppState state;
        state.MenuBranch = row.branch;
        state.HelpTopic = static_cast<std::int16_t>(row.topicBefore);
        state.PhPath[1] = row.phCalibration;
        state.HelpFile = "left over";
        EXPECT_EQ(RequestHelp(state, row.from), row.answered);
        EXPECT_EQ(state.HelpTopic, row.topic);
        EXPECT_EQ(state.HelpStep, row.step);
        EXPECT_EQ(state.HelpFile, row.file);
        EXPECT_EQ(state.PhPath[1], row.phCalibration) << "the marks belong to the screens";
    }
}

TEST(HelpTopics, CalibrationScreenMovesOnWhenSamplesAreMeasured) {
    AppState state;
    state.TableOpen = 1;
    EXPECT_TRUE(RequestHelp(state, ScreenCode::fmISEcli));
    EXPECT_EQ(state.HelpTopic, 1);
    state.HelpTopic = 2;
    EXPECT_TRUE(RequestHelp(state, ScreenCode::frmQSave));
    EXPECT_EQ(state.HelpTopic, 2);
}

TEST(Illustrations, EveryOneIsDrawnAndStaysInside) {
    std::set<HelpPicture> pictures;
    for (const HelpSheetRow& row : HelpSheets())
        pictures.insert(row.picture);
    for (const HelpDocument& document : HelpDocuments())
        pictures.insert(document.picture);
    EXPECT_EQ(pictures.size(), 11U);
    std::set<std::size_t> sizes;
    for (const HelpPicture picture : pictures) {
        const DisplayList list = Illustration(picture);
        sizes.insert(list.Items().size());
        for (const DisplayItem& item : list.Items())
            for (const auto& [value, limit] : {std::pair(item.x1, IllustrationWidth),
                                               {item.x2, IllustrationWidth},
                                               {item.y1, IllustrationHeight},
                                               {item.y2, IllustrationHeight}})
                EXPECT_TRUE(value >= 0 && value <= limit) << static_cast<int>(picture) << ": " << value;
    }
    EXPECT_EQ(sizes.size(), pictures.size()) << "two alike";
}

/// Sum over all items, in which each number and its place count; coordinates to the twip.
std::uint32_t Fingerprint(const DisplayList& list) {
    std::uint32_t sum = 2166136261U;
    const auto take = [&](long value) { sum = (sum ^ static_cast<std::uint32_t>(value)) * 16777619U; };
    for (const DisplayItem& item : list.Items()) {
        for (const float number : {item.x1, item.y1, item.x2, item.y2, item.size * 4, item.maxWidth})
            take(std::lround(number));
        for (const int number : {static_cast<int>(item.kind), static_cast<int>(item.hollow), item.colour})
            take(number);
        for (const char letter : item.text)
            take(letter);
    }
    return sum;
}

/// The illustrations as they have been looked at. Who changes one looks at it anew and puts its sum here.
TEST(Illustrations, AreTheOnesThatHaveBeenLookedAt) {
    using enum HelpPicture;
    const std::pair<HelpPicture, std::uint32_t> rows[] = {
        {Electrodes, 1712928678U}, {Line, 4130811647U},  {Meter, 3720997029U},    {Addition, 3665271050U},
        {Membrane, 2988002725U},   {Flask, 1535192582U}, {Ions, 1377290296U},     {Buffers, 1170761552U},
        {Glass, 1106955778U},      {Trace, 1227155450U}, {Interface, 3967985365U}};
    for (const auto& [picture, sum] : rows)
        EXPECT_EQ(Fingerprint(Illustration(picture)), sum) << static_cast<int>(picture);
    EXPECT_EQ(Fingerprint(PageCorner(false)), 4031704056U);
    EXPECT_EQ(Fingerprint(PageCorner(true)), 2920632220U);
}

}  // namespace
}  // namespace kelvo
