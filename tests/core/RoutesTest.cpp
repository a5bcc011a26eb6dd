#include "core/Routes.h"

#include <gtest/gtest.h>

#include "support/Joined.h"

namespace kelvo::test {
namespace {

const char* const NoIse = "The ISE channel is not avaliable, please re-configure the hardware setup.";
const char* const NoChannel = "The channel is not avaliable, please re-configure the hardware setup.";
const char* const NoPh = "None of the channels are avaliable, please re-configure the hardware setup.";

/// One button: where it leads, what it notes down, and what it says when nothing is plugged in.
struct Route {
    const char* caption;
    ScreenCode target;
    int topic, path;
    const char* refusal;
    const char* openers;  ///< numbers of the channels each of which opens it; empty: open anyway
};

const std::vector<Route> Branches[] = {
    {{"Introduction", ScreenCode::frminfo, -1, -1, "", ""},
     {"Calibration", ScreenCode::frmPHSe, 7, 1, NoPh, "03"},
     {"Measurement", ScreenCode::frmDsply, 7, 2, NoPh, "03"},
     {"pH Continuous Recording", ScreenCode::frmPHSe, 7, 3, "", ""}},
    {{"Introduction", ScreenCode::frminfo, -1, -1, "", ""},
     {"Calibration", ScreenCode::frmsetup, 0, 1, NoIse, "1"},
     {"Potentiometry", ScreenCode::fmISEcli, 1, -1, NoIse, "1"},
     {"Standard Addition", ScreenCode::frmStanad01, 2, -1, NoChannel, "1"},
     {"Sample Addition", ScreenCode::frmSampa, 3, -1, NoChannel, "1"},
     {"ISE Continuous Recording", ScreenCode::frmPHSe, -1, -1, "", ""}},
    {{"Conversion / Dilution", ScreenCode::frmcnvs, 5, -1, "", ""},
     {"ISE Selectivity", ScreenCode::frmselity, 4, -1, "", ""},
     {"Activity Coefficients", ScreenCode::frmacft, 6, -1, "", ""}},
};

TEST(Routes, WhereEachButtonLeadsAndWhatOpensIt) {
    for (int branch = 0; branch < 3; ++branch) {
        const auto& rows = MenuBranch(branch).rows;
        const auto& expected = Branches[branch];
        ASSERT_EQ(rows.size(), expected.size()) << branch;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const Route& route = expected[i];
            EXPECT_STREQ(rows[i].caption, route.caption) << branch;
            EXPECT_EQ(rows[i].target, route.target) << route.caption;
            EXPECT_EQ(Joined(rows[i].helpTopic, rows[i].path), Joined(route.topic, route.path)) << route.caption;
            EXPECT_EQ(rows[i].need == RouteNeed::IseChannelAndSlope, route.refusal == NoChannel) << route.caption;
            EXPECT_EQ(RouteRefusal({}, rows[i]), route.refusal) << route.caption;
            for (int channel = 0; channel < 5; ++channel) {
                AppState state;
                state.Channel[static_cast<std::size_t>(channel)] = 1;
                const bool opens =
                    std::string(route.openers).find(static_cast<char>('0' + channel)) != std::string::npos;
                EXPECT_EQ(RouteRefusal(state, rows[i]), opens ? "" : route.refusal) << route.caption << channel;
            }
        }
    }
}

}  // namespace
}  // namespace kelvo::test
