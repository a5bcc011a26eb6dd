#include <sys/mount.h>

#include "support/Stage.h"
#include "tables/frmQSaveModel.h"

namespace kelvo::test {
namespace {

std::string GoldenFile(const char* name) {
    return std::string(KELVO_SOURCE_DIR "/tests/tables/golden/") + name;
}

class TableScreen : public Stage {
 protected:
    void SetUp() override {
        Stage::SetUp();
        state.IonIndex = 10;
        state.FileTemp = "25";
        state.ReturnScreen = 1;
        state.DataPath = folder.string() + "/";
    }
    Screen* Open(const char* golden, const char* as) {
        std::filesystem::copy_file(GoldenFile(golden), folder / as);
        files.Expect(Path(as));
        desk.Show(ScreenCode::frmQSave);
        Screen* screen = Shown(ScreenCode::frmQSave);
        Choose(screen, "mnuFile(0)");
        return screen;
    }
    static std::string Data(Screen* screen, int box) {
        return S(Find<QPlainTextEdit>(screen, QStringLiteral("txtData(%1)").arg(box))->toPlainText());
    }
    static std::string Cell(Screen* screen, int row, int col) {
        return S(Find<QTableView>(screen, "Grid1")->model()->index(row, col).data().toString());
    }
};

TEST_F(TableScreen, ShowsHeadHeadsAndRows) {
    Screen* screen = Open("SAMPLES.TAB", "A.TAB");
    EXPECT_EQ(S(screen->windowTitle()), "Data Table");
    EXPECT_EQ(Data(screen, 0), "24/11/2026 08:30");
    EXPECT_EQ(Data(screen, 1), "1\t10\t10\t\n-179.5\t-120.5\t-119\t\n59.00\tN/A\t");
    EXPECT_EQ(Data(screen, 7), "TISAB II");
    EXPECT_EQ(S(Find<QLabel>(screen, "Label1(7)")->text()), "Ref. : Ag/AgCl R7");
    auto* grid = Find<QTableView>(screen, "Grid1");
    EXPECT_EQ(grid->model()->rowCount(), 2);
    EXPECT_EQ(S(grid->model()->headerData(5, Qt::Horizontal).toString()), "mol/L");
    EXPECT_TRUE(grid->isColumnHidden(0)) << "ten twips are not a column to look at";
    EXPECT_EQ(Cell(screen, 1, 1), "Brook µ°");
    Key(screen, Qt::Key_7);
    EXPECT_EQ(Cell(screen, 1, 1), "Brook µ°") << "the grid has no editing";
}

TEST_F(TableScreen, PhTablesHaveTheirOwnHead) {
    state.ReturnScreen = 6;
    state.pHMode = -1;
    Screen* screen = Open("LIVE.PHT", "A.PHT");
    EXPECT_EQ(Data(screen, 2), "pH: 7, 4\nmV:0, 177(25°C)");
    EXPECT_EQ(S(Find<QLabel>(screen, "Label1(9)")->text()), "Operator: Ann Lee");
    EXPECT_EQ(Find<QTableView>(screen, "Grid1")->model()->columnCount(), 11);
}

TEST_F(TableScreen, CopiesCellsAsTabText) {
    Screen* screen = Open("SAMPLES.TAB", "A.TAB");
    auto* grid = Find<QTableView>(screen, "Grid1");
    const auto* model = qobject_cast<TableModel*>(grid->model());
    grid->selectionModel()->select(QItemSelection(model->index(0, 3), model->index(1, 4)), QItemSelectionModel::Select);
    Choose(screen, "mnuCopy");
    EXPECT_EQ(S(QGuiApplication::clipboard()->text()), "-150.2\t3.14\n-100\t22.23\n");
    grid->clearSelection();
    grid->selectionModel()->select(model->index(0, 1), QItemSelectionModel::Select);
    grid->selectionModel()->select(model->index(1, 2), QItemSelectionModel::Select);
    EXPECT_EQ(S(model->Copied(grid->selectionModel()->selection())), "Tap 1\t\n\t09:07\n")
        << "what lies between is empty";
}

TEST_F(TableScreen, TellsWhatASaveLeavesOut) {
    Screen* screen = Open("SAMPLES.TAB", "A.TAB");
    table.Save();
    Choose(screen, "mnuFile(1)");
    desk.Show(ScreenCode::frmQSave);
    EXPECT_EQ(screen->RemarkText(),
              "Saved to A.TAB. Row 2 of 2 is not in the file. Of the head only the first two lines are in the file.");
}

TEST_F(TableScreen, FollowsTheTableWhileItIsShown) {
    desk.Show(ScreenCode::frmQSave);
    Screen* screen = Shown(ScreenCode::frmQSave);
    auto* model = Find<QTableView>(screen, "Grid1")->model();
    table.AddRow(" 1\ta");
    EXPECT_EQ(model->rowCount(), 2);
    EXPECT_EQ(Cell(screen, 0, 1), "a");
    dataTable.SetCell(1, 1, "b");
    EXPECT_EQ(Cell(screen, 0, 1), "b");
    table.DropRow();
    EXPECT_EQ(model->rowCount(), 1);
    // A file without rows leaves no row at all; the next row brings the table back.
    dataTable.RemoveItem(1);
    EXPECT_EQ(model->rowCount(), 0);
    state.TableOpen = 0;
    table.AddRow(" 1\tc");
    EXPECT_EQ(Cell(screen, 0, 1), "c");
}

TEST_F(TableScreen, FrameAndCancelledOpenCloseIt) {
    desk.Show(ScreenCode::frmQSave);
    Screen* screen = Shown(ScreenCode::frmQSave);
    screen->close();
    Settle();
    EXPECT_FALSE(desk.IsLoaded(ScreenCode::frmQSave));
    EXPECT_FALSE(table.Loaded());
    desk.Show(ScreenCode::frmQSave);
    files.Expect(std::nullopt);
    Choose(Shown(ScreenCode::frmQSave), "mnuFile(0)");
    EXPECT_FALSE(desk.IsLoaded(ScreenCode::frmQSave));

    table.AddRow(" 1\ta");
    state.TableOpen = 1;
    desk.Show(ScreenCode::frmQSave);
    Screen* again = Shown(ScreenCode::frmQSave);
    Key(again, Qt::Key_Escape);
    EXPECT_FALSE(again->isVisible());
    again->show();
    again->close();
    EXPECT_TRUE(desk.IsLoaded(ScreenCode::frmQSave)) << "measured rows are still to be saved";
    EXPECT_EQ(dataTable.Cell(1, 1), "a");
}

TEST_F(TableScreen, ExportsCsvAndXlsx) {
    table.AddRow(" 1\tTap, \"cold\"\t09:05\t-150.2\t3.14\t1.65E-4\t25\t77.0\tN/A");
    table.AddRow(" 2\t007\t09:07\t-100\t22\t1E-3\t25\t77.0\t7.5");
    desk.Show(ScreenCode::frmQSave);
    Screen* screen = Shown(ScreenCode::frmQSave);
    files.Expect(Path("out"));
    Choose(screen, "mnuExportTo(0)");
    EXPECT_EQ(Content("out.csv"),
              "Row,Sample Number,Time,mV,ppm,mol/L,°C,°F,pH\r\n"
              " 1,\"Tap, \"\"cold\"\"\",09:05,-150.2,3.14,1.65E-4,25,77.0,N/A\r\n"
              " 2,007,09:07,-100,22,1E-3,25,77.0,7.5\r\n");
    EXPECT_EQ(screen->RemarkText(), "Exported to out.csv.");

    files.Expect(Path("out"));
    Choose(screen, "mnuExportTo(1)");
    if (QStandardPaths::findExecutable("unzip").isEmpty()) GTEST_SKIP();
    QProcess unzip;
    unzip.start("unzip", {"-p", Q(Path("out.xlsx")), "xl/worksheets/sheet1.xml"});
    ASSERT_TRUE(unzip.waitForFinished(30000));
    const std::string sheet = unzip.readAllStandardOutput().toStdString();
    for (const char* part : {"<c r=\"D2\"><v>-150.2</v></c>", "<c r=\"F2\"><v>1.65E-4</v></c>", "<t>007</t>",
                             "<t>09:05</t>", "<t>N/A</t>", "<t>Tap, \"cold\"</t>"}) {
        const bool found =
            sheet.find(part) != std::string::npos || (std::string(part).find("1.65E-4") != std::string::npos &&
                                                      sheet.find("<c r=\"F2\"><v>0.000165") != std::string::npos);
        EXPECT_TRUE(found) << part << " in " << sheet;
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "out.xlsx.part"));

    files.Expect(Path("no/out"));
    prompts.ExpectMessage("Error76Saving" + Path("no/out.xlsx") + ":Path not found.");
    Choose(screen, "mnuExportTo(1)");
}

TEST_F(TableScreen, AFullDiskLeavesTheOldExportWhole) {
    std::filesystem::create_directory(folder / "small");
    if (mount("none", Path("small").c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "a small file system needs the right to mount one";
    desk.Show(ScreenCode::frmQSave);
    Screen* screen = Shown(ScreenCode::frmQSave);
    for (int i = 0; i < 20000; ++i)
        table.AddRow("1\t" + std::to_string(i * 7919) + " of a sample\t09:05");
    for (const auto& [item, name] :
         {std::pair{"mnuExportTo(0)", "small/old.csv"}, {"mnuExportTo(1)", "small/old.xlsx"}}) {
        std::ofstream(Path(name)) << "old";
        files.Expect(Path(name));
        prompts.ExpectAsk(Path(name) + "   This file already exists, would you like to replace it?", true);
        prompts.ExpectMessage("Error61Saving" + Path(name) + ":Disk full.");
        Choose(screen, item);
        EXPECT_EQ(Content(name), "old");
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder / "small"), {}), 2) << "nothing is left beside";
    EXPECT_EQ(umount(Path("small").c_str()), 0);
}

TEST_F(TableScreen, NumbersOrDropsTheRowJustAdded) {
    table.AddRow(" 1\t\t09:05");
    state.TableOpen = 1;
    state.TableFile = Path("LIVE.TAB");
    OnModal([](Screen* number) {
        EXPECT_EQ(S(Find<QLabel>(number, "Label1")->text()),
                  "To save the data, please type the sample number in the box below, then click on \"Ok\". ");
        Put(number, "S 1");
    });
    desk.ShowModal(ScreenCode::frmMsg);
    Settle();
    EXPECT_EQ(dataTable.Cell(1, 1), "S 1");
    EXPECT_EQ(state.QuickCount, 1);
    EXPECT_EQ(state.CaliDirty, 1);
    EXPECT_FALSE(desk.IsLoaded(ScreenCode::frmMsg));
    EXPECT_NE(Content("LIVE.TAB").find("1\tS 1\t09:05"), std::string::npos) << "what was measured stands on disk";

    for (const bool byEscape : {false, true}) {
        table.AddRow(" 2\t\t09:06");
        OnModal([&](Screen* number) {
            if (byEscape)
                Key(number, Qt::Key_Escape);
            else
                Click(number, "Command1(1)");
        });
        desk.ShowModal(ScreenCode::frmMsg);
        EXPECT_EQ(dataTable.Rows(), 3) << "Cancel undoes the row";
    }
    EXPECT_EQ(Content("LIVE.TAB").find("09:06"), std::string::npos);

    table.AddRow(" 2\t\t09:07");
    OnModal([](Screen* number) { Enter(number); });
    desk.ShowModal(ScreenCode::frmMsg);
    EXPECT_EQ(dataTable.Rows(), 4) << "an empty number is accepted";
}

}  // namespace
}  // namespace kelvo::test
