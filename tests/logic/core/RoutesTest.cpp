#include "core/Routes.h"

#include <gtest/gtest.h>

#include "app/AppState.h"
#include "support/Joined.h"

namespace kelvo::test {
namespace {

const char* const NoIse = "The ISE channel is not avaliable, please re-configure the hardware setup.";
const char* const NoChannel = "The channel is not avaliable, please re-configure the hardware setup.";
const char* const NoPh = "None of the channels are avaliable, please re-configure the hardware setup.";

TEST(Routes, WhereEachButtonLeadsAndWhatOpensIt) {
    constexpr const char* Any = "01234";
    // caption, screen, help topic, mark; the refusal with nothing plugged in, the channels each of which opens it
    using Route = std::tuple<std::string, ScreenCode, int, int, std::string, std::string>;
    const std::vector<Route> branches[] = {
        {{"Introduction", ScreenCode::frminfo, -1, -1, "", Any},
         {"Calibration", ScreenCode::frmPHSe, 7, 1, NoPh, "03"},
         {"Measurement", ScreenCode::frmDsply, 7, 2, NoPh, "03"},
         {"pH Continuous Recording", ScreenCode::frmPHSe, 7, 3, "", Any}},
        {{"Introduction", ScreenCode::frminfo, -1, -1, "", Any},
         {"Calibration", ScreenCode::frmsetup, 0, 1, NoIse, "1"},
         {"Potentiometry", ScreenCode::fmISEcli, 1, -1, NoIse, "1"},
         {"Standard Addition", ScreenCode::frmStanad01, 2, -1, NoChannel, "1"},
         {"Sample Addition", ScreenCode::frmSampa, 3, -1, NoChannel, "1"},
         {"ISE Continuous Recording", ScreenCode::frmPHSe, -1, -1, "", Any}},
        {{"Conversion / Dilution", ScreenCode::frmcnvs, 5, -1, "", Any},
         {"ISE Selectivity", ScreenCode::frmselity, 4, -1, "", Any},
         {"Activity Coefficients", ScreenCode::frmacft, 6, -1, "", Any}},
    };
    for (int branch = 0; branch < 3; ++branch) {
        const auto& rows = MenuBranch(branch).rows;
        ASSERT_EQ(rows.size(), branches[branch].size()) << branch;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const RouteRow& row = rows[i];
            std::string openers;
            for (std::size_t channel = 0; channel < 5; ++channel) {
                AppState state;
                state.Channel[channel] = 1;
                if (RouteRefusal(state, row).empty()) openers += std::to_string(channel);
            }
            EXPECT_EQ(Route(row.caption, row.target, row.helpTopic, row.path, RouteRefusal({}, row), openers),
                      branches[branch][i]);
        }
    }
}

}  // namespace
}  // namespace kelvo::test
