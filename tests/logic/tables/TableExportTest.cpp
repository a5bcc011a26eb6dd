#include "tables/TableExport.h"

#include <clocale>
#include <locale>
#include <sstream>

#include "support/Joined.h"
#include "tables/TableFixture.h"
#include "tables/Workbook.h"
#include "tables/WorkbookParts.h"
#include "text/Number.h"
#include "text/ProgramLocale.h"

namespace kelvo::test {
namespace {

using TableExportTest = TableTest;

TEST(Workbook, TextsThatANumberCanShowAgain) {
    for (const char* number :
         {" 2", "-61.5", "1.65E-4", ".5", "0", "12.10", "0.00", "123456789012345", "0.000000000000001234"})
        EXPECT_TRUE(NumberText(number)) << number;
    for (const char* text :
         {"", "09:05", "007", "1 2", "-", "1E", "-inf", "0x10", "+5", "1e400", "1.", "1,5", "1234567890123456", "N/A"})
        EXPECT_FALSE(NumberText(text)) << text;
}

TEST_F(TableExportTest, CsvGuardsFormulasAndLeavesNumbersAlone) {
    std::vector<std::pair<std::string, std::string>> rows = {
        {"-1,5", "\"'-1,5\""}, {"=1,2", "\"'=1,2\""}, {"a \"b\"", "\"a \"\"b\"\"\""}};
    for (const char* formula : {"=1+1", "@SUM(A1)", "+cmd", "-x", "-inf", "--1", " =1", "-1+2"})
        rows.emplace_back(formula, std::string("'") + formula);
    for (const char* plain : {"-61.5", "+5", "-1.5E-3", "-007", "+1234567890123456789", "Tap #3"})
        rows.emplace_back(plain, plain);
    Progress none;
    for (const auto& [cell, field] : rows) {
        logic.FillRows({"1\t" + cell + "\t09:05\t" + cell});
        const std::string csv = TableCsv(table, none).value();
        EXPECT_EQ(csv.substr(csv.find("\r\n") + 2), "1," + field + ",09:05," + field + ",,,,,\r\n");
    }
}

/// Numbers as a desktop with a decimal comma writes them.
class Comma : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST_F(TableExportTest, NothingHangsOnTheLocale) {
    Progress none;
    logic.AddRow(" 1\tTap 1\t09:05\t-150.2\t12345.67\t1.65E-4\t25\t77.0\t7.5");
    for (int i = 0; i < 1200; ++i)
        table.AddItem(" 2\tTap", table.Rows() - 1);
    const auto written = [&] {
        return Joined(TableXlsx(table, none)->bytes, *TableCsv(table, none), HeadCsv(table),
                      RewrittenTableBytes(state, table), Format(1234.5, "#0.00"), Str(Val("1.5")));
    };
    const std::string plain = written();
    std::locale::global(std::locale(std::locale::classic(), new Comma));
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "tr_TR.UTF-8"})
        if (std::setlocale(LC_ALL, name) != nullptr) break;
    EXPECT_TRUE(written() == plain);
    SetProgramLocale();
    std::ostringstream stream;
    stream << 1234.5;
    EXPECT_EQ(Joined(stream.str(), std::localeconv()->decimal_point), "1234.5|.");
    std::setlocale(LC_ALL, "C");
}

TEST_F(TableExportTest, WhatASheetDoesNotHoldGoesOnInTheNextUnderItsHeads) {
    Progress none;
    for (int i = 1; i <= 5; ++i)
        logic.AddRow(" " + std::to_string(i) + "\tS" + std::to_string(i));
    const auto parts = Parts(TableXlsx(table, none, {}, 3)->bytes);
    std::string found;
    for (int sheet = 1; sheet <= 3; ++sheet) {
        const std::string& rows = parts.at("xl/worksheets/sheet" + std::to_string(sheet) + ".xml");
        for (const char* text : {"Sample Number", "S1", "S2", "S3", "S4", "S5"})
            if (rows.find(std::string(">") + text + "<") != std::string::npos) found += std::string(text) + " ";
    }
    EXPECT_EQ(found, "Sample Number S1 S2 Sample Number S3 S4 Sample Number S5 ");
    EXPECT_EQ(Between(parts.at("xl/workbook.xml"), "<sheets>", "</sheets>"),
              "<sheet name=\"Data Table\" sheetId=\"1\" r:id=\"rId1\"/>"
              "<sheet name=\"Data Table 2\" sheetId=\"2\" r:id=\"rId2\"/>"
              "<sheet name=\"Data Table 3\" sheetId=\"3\" r:id=\"rId3\"/>"
              "<sheet name=\"Head\" sheetId=\"4\" r:id=\"rId4\"/>");
    logic.FillRows({" 3\t1E5\t1.5\t12.10"});
    const std::string sheet = Parts(TableXlsx(table, none)->bytes).at("xl/worksheets/sheet1.xml");
    for (const char* part : {">1E5</t>", ">1.5</t>", "<v>12.10</v>"})
        EXPECT_NE(sheet.find(part), std::string::npos) << part << ": names and times are texts";
}

TEST_F(TableExportTest, TheHeadIsOneFactACell) {
    AddSamples();
    EXPECT_EQ(HeadCsv(table),
              "Calibration,24/11/2026 08:30\r\n"
              "Reference electrode of the calibration,Ag/AgCl R7\r\n"
              "Reference electrode,Ag/AgCl R7\r\n"
              "Electrode of the calibration,F123\r\n"
              "Electrode serial number,F123\r\n"
              "Standards (ppm),1,10,10\r\n"
              "Values (mV),-179.5,-120.5,-119\r\n"
              "Slopes (mV/decade),59.00,N/A\r\n"
              "Temperature (°C),25\r\n"
              "Temperature (°F),77.0\r\n"
              "Ion,F\r\n"
              "Experiment,24/11/2026\r\n"
              "Operator,Ann Lee\r\n"
              "ISAB/Notes,TISAB II\r\n");
    logic.Unload();
    Own(ScreenCode::frmDsply, -1);
    CalibratePh();
    logic.Load();
    EXPECT_EQ(HeadCsv(table),
              "Electrode 1: calibration,23/11/2026 16:00\r\n"
              "Electrode 1: serial number,PH-1\r\n"
              "Electrode 1: buffers (pH),7,4\r\n"
              "Electrode 1: buffers (mV),0,177\r\n"
              "Electrode 1: buffers (°C),25\r\n"
              "Experiment date,24/11/2026\r\n"
              "Operator,Ann Lee\r\n");
    EXPECT_EQ(Joined(HeadCsvName("/a.b/run.csv"), HeadCsvName("x.y.txt")), "/a.b/run-head.csv|x.y-head.txt");
}

TEST_F(TableExportTest, NothingIsWrittenBeforeEverythingIsBuiltAndEveryFileIsAskedAbout) {
    class Cancelling : public Progress {
     public:
        bool At(int done, int) override { return done < 2; }
    } cancelling;
    Progress none;
    AddSamples();
    for (const auto way : {ExportCsv, ExportXlsx}) {
        files.Expect(folder / "out");
        EXPECT_FALSE(way(state, table, prompts, files, cancelling));
        EXPECT_EQ(state.StatusMessage, "The export was cancelled; no file was written.");
    }
    EXPECT_TRUE(folder.Names().empty());
    files.Expect(folder / "gone/out");
    prompts.ExpectMessage("Error76Saving" + folder / "gone/out.xlsx" + ":Path not found.");
    EXPECT_FALSE(ExportXlsx(state, table, prompts, files, none));
    folder.Put("out-head.csv", "mine");
    files.Expect(folder / "out");
    prompts.ExpectReplace(folder / "out-head.csv", false);
    files.Expect(folder / "other");
    EXPECT_TRUE(ExportCsv(state, table, prompts, files, none));
    EXPECT_EQ(state.StatusMessage, "Exported to other.csv, the head to other-head.csv.");
    EXPECT_EQ(folder.Get("out-head.csv"), "mine");

    for (const auto way : {ExportCsv, ExportXlsx}) {
        const std::string name = "out-head.csv";
        files.Expect(folder / name);
        prompts.ExpectReplace(folder / name, true);
        prompts.ExpectMessage("Error61Saving" + folder / name + ":Disk full.");
        OnSmallDisk(64, [&] { EXPECT_FALSE(way(state, table, prompts, files, none)); });
    }
    EXPECT_EQ(Joined(folder.Get("out-head.csv"), folder.Names().size()), "mine|3");

    // The next sample would be written over an export in the table's own file, by whatever name it goes.
    state.TableFile = folder / "LIVE.csv";
    std::filesystem::create_symlink("LIVE.csv", folder / "link.xlsx");
    const std::pair<decltype(&ExportCsv), const char*> ways[] = {
        {ExportCsv, "live.csv"}, {ExportCsv, "LIVE.csv"}, {ExportXlsx, "link.xlsx"}};
    for (const auto& [way, name] : ways) {
        files.Expect(folder / name);
        prompts.ExpectMessage(folder / name +
                              " is the file of the table that is being measured, and the next sample is written there. "
                              "Please choose another name for the export.");
        files.Expect(std::nullopt);
        EXPECT_FALSE(way(state, table, prompts, files, none));
        logic.KeepRows();
    }
}

}  // namespace
}  // namespace kelvo::test
