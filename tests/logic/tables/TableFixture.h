#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "app/AppState.h"
#include "support/Scripted.h"
#include "support/SourceDir.h"
#include "tables/TableFile.h"
#include "tables/TablePresenter.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {

/// A file written by hand from the format.
inline std::string Golden(const std::string& name) {
    std::ifstream in(SourceDir() + "tests/logic/tables/golden/" + name, std::ios::binary);
    EXPECT_TRUE(in.is_open()) << name;
    return {std::istreambuf_iterator<char>(in), {}};
}

/// A fluoride calibration of three points, two of them at the same concentration, and a table screen on it.
class TableTest : public testing::Test {
 protected:
    TableTest() {
        state.DataPath = folder.Path();
        state.Operator = "Ann Lee";
        state.RefElectrode = state.FileRefElectrode = {"Ag/AgCl", "R7"};
        state.ElectrodeNum = state.FileElectrodeNum = {"F123", "PH-1", "PH-2"};
        state.ISAB = "TISAB II";
        state.IonIndex = 10;
        state.CaliPoints = 3;
        state.CaliPpm = {0, 1, 10, 10};
        state.CaliE = {0, -179.5f, -120.5f, -119};
        state.CaliLogC = {0, -5, -4, -4};
        state.CaliSlope = 58.5f;
        state.FileDate = "24/11/2026 08:30";
        state.FileTemp = "25";
        state.ReturnScreen = 1;
    }

    void Own(ScreenCode owner, int pHMode) {
        state.ReturnScreen = static_cast<std::int16_t>(owner);
        state.pHMode = static_cast<std::int16_t>(pHMode);
    }
    /// Electrode 1 with two buffers, electrode 2 on but never calibrated.
    void CalibratePh() {
        state.Channel = {1, 0, 1, 1, 1};
        state.BufferCount = {2, 2, 0};
        state.Buffers1 = {{0, 0, 0}, {0, 7, 0}, {0, 4, 177}};
        state.PhCaliDate[1] = "23/11/2026 16:00";
        state.PhCaliTemp[1] = 25;
    }
    void AddSamples() {
        logic.AddRow(" 1\tTap 1\t09:05\t-150.2\t3.14\t1.65E-4\t25\t77.0\t7.5");
        logic.AddRow(" 2\tBrook µ°\t09:07\t-100\t22.23\t1.17E-3\t25\t77.0\t7.5");
    }
    std::vector<std::string> Rows() const {
        std::vector<std::string> rows;
        for (int row = 1; row < table.Rows(); ++row)
            rows.push_back(table.RowText(row));
        return rows;
    }
    SaveOutcome SaveTo(const std::string& name) {
        files.Expect(folder / name);
        return SaveTableFile(state, table, prompts, files);
    }

    ScratchFolder folder;
    AppState state;
    DataTable table;
    ScriptedPrompts prompts;
    ScriptedFiles files;
    FixedClock clock;
    TablePresenter logic{state, table, prompts, files, clock};
};

}  // namespace kelvo::test
