#include "help/HelpTopics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <set>
#include <tuple>

#include "app/AppState.h"
#include "help/HelpTexts.h"
#include "help/Illustrations.h"

namespace kelvo {
namespace {

/// Every topic and state: how many lines it has, its note file, whether it goes on, how it begins.
TEST(HelpTopics, TopicStateLinesAndFile) {
    const std::tuple<const char*, int, int, std::size_t, const char*, bool, const char*> rows[] = {
        {"calibration setup", 0, 1, 11, "info0.txt", false, "Please enter the various parameters"},
        {"calibration without a mark", 0, 0, 11, "info0.txt", false, "Please enter the various parameters"},
        {"calibration graph", 0, 2, 11, "info0.txt", false, "When you have an acceptable Calibration"},
        {"potentiometry", 1, 0, 19, "info1.txt", true, "The Potentiometry/Measurement screen"},
        {"standard addition", 2, 0, 11, "info2.txt", false, "Please complete all the boxes"},
        {"standard addition, on line", 2, 3, 11, "info2.txt", false, "Please complete all the boxes"},
        {"sample addition", 3, 0, 11, "info3.txt", false, "Please complete all the boxes"},
        {"selectivity", 4, 0, 11, "info4.txt", false, "Select the ion in which you are interested"},
        {"conversion", 5, 0, 21, "info5.txt", true, "To convert from ppm to moles, or vice verce"},
        {"activity", 6, 0, 19, "info6.txt", true, "Select an ion from the 'ion box'"},
        {"pH without a mark", 7, 0, 0, "", false, ""},
        {"pH calibration", 7, 1, 12, "info7.txt", false, "For 2 channel interfaces"},
        {"pH display", 7, 2, 36, "info8.txt", true, ""},
        {"recording setup", 7, 3, 7, "info9.txt", false, "Please select your options"},
        {"recording", 7, 4, 7, "info10.txt", false, "Select the Options menu"},
        {"a topic that does not exist", 8, 1, 0, "", false, ""},
        {"a topic below 0", -1, 0, 0, "", false, ""},
    };
    for (const auto& [name, topic, step, count, file, second, begins] : rows) {
        SCOPED_TRACE(name);
        const auto& lines = HelpLines(topic, step);
        EXPECT_EQ(lines.size(), count);
        EXPECT_STREQ(FindHelpSheet(topic, step).note, file);
        EXPECT_EQ(FindHelpSheet(topic, step).second, second);
        const std::string first = lines.empty() ? "" : lines[0].text;
        EXPECT_TRUE(first.starts_with(begins)) << first;
    }
    // Line 11 of the long lists stands on neither sheet.
    EXPECT_STREQ(HelpLines(7, 1)[11].text, "");
    EXPECT_STREQ(HelpLines(7, 2)[11].text, "");
    for (const int none : {8, -1})
        EXPECT_EQ(HelpCaption(none), "  Help Sheet and Note pad");
}

TEST(HelpTopics, StepIsTheLatestMarkOfThePath) {
    const std::tuple<std::int16_t, std::array<std::int16_t, 3>, std::array<std::int16_t, 5>, int> rows[] = {
        {0, {0, 0, 0}, {0, 1, 1, 1, 1}, 1}, {0, {0, 1, 0}, {}, 1},       {0, {0, 1, 1}, {}, 2},
        {1, {0, 1, 1}, {0, 1, 0, 0, 0}, 0}, {7, {0, 1, 1}, {}, 0},       {7, {}, {1, 0, 0, 0, 0}, 0},
        {7, {}, {0, 1, 0, 0, 0}, 1},        {7, {}, {0, 0, 1, 0, 0}, 2}, {7, {}, {0, 0, 0, 1, 0}, 3},
        {7, {}, {0, 0, 0, 1, 1}, 4},        {7, {}, {0, 1, 1, 0, 0}, 2},
    };
    for (const auto& [topic, ise, ph, step] : rows) {
        AppState state;
        state.HelpTopic = topic;
        state.IsePath = ise;
        state.PhPath = ph;
        EXPECT_EQ(PresentHelpStep(state), step) << topic << ' ' << ise[2] << ph[1] << ph[4];
    }
}

/// What "Notes" and F1 lead to from each screen, whatever a dialog left as the topic.
TEST(HelpTopics, EveryScreenLeadsToItsSheet) {
    using enum ScreenCode;
    // from, branch, topic before, the mark of the pH calibration; whether there is one, topic, step, file
    const std::tuple<ScreenCode, int, std::int16_t, std::int16_t, bool, int, int, const char*> rows[] = {
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
        {frmResults, 1, 0, 0, true, 1, 2, ""},
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
    for (const auto& [from, branch, before, mark, answered, topic, step, file] : rows) {
        SCOPED_TRACE(static_cast<int>(from));
        AppState state;
        state.MenuBranch = branch;
        state.HelpTopic = before;
        state.PhPath[1] = mark;
        state.HelpFile = "left over";
        EXPECT_EQ(RequestHelp(state, from), answered);
        EXPECT_EQ(state.HelpTopic, topic);
        EXPECT_EQ(state.HelpStep, step);
        EXPECT_EQ(state.HelpFile, file);
        EXPECT_EQ(state.PhPath[1], mark) << "the marks belong to the screens";
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
    std::set<HelpPicture> named;
    for (const HelpSheetRow& row : HelpSheets())
        named.insert(row.picture);
    for (const HelpDocument& document : HelpDocuments())
        named.insert(document.picture);
    EXPECT_EQ(named.size(), std::size(rows));
    for (const auto& [picture, sum] : rows) {
        EXPECT_EQ(Fingerprint(Illustration(picture)), sum) << static_cast<int>(picture);
        const DisplayList drawn = Illustration(picture);
        for (const DisplayItem& i : drawn.Items())
            EXPECT_TRUE(std::min({i.x1, i.x2, i.y1, i.y2}) >= 0 && std::max(i.x1, i.x2) <= IllustrationWidth &&
                        std::max(i.y1, i.y2) <= IllustrationHeight);
    }
    EXPECT_EQ(Fingerprint(PageCorner(false)), 4031704056U);
    EXPECT_EQ(Fingerprint(PageCorner(true)), 2920632220U);
}

}  // namespace
}  // namespace kelvo
