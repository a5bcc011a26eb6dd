#include "devices/QtProgress.h"
#include "support/Patience.h"
#include "support/ScreenFixture.h"
#include "tables/frmQSaveModel.h"

namespace kelvo::test {
namespace {

class TableScreen : public ScreenFixture {
 protected:
    void SetUp() override {
        ScreenFixture::SetUp();
        state.IonIndex = 10;
        state.ReturnScreen = 1;
        state.DataPath = folder.string() + "/";
    }
    Screen* Show() {
        screens.Show(ScreenCode::frmQSave);
        return Shown(ScreenCode::frmQSave);
    }
    Screen* Open(const char* golden) {
        std::filesystem::copy_file(SourceDir() + "tests/logic/tables/golden/" + golden, folder / "A.TAB");
        files.Expect(Path("A.TAB"));
        Screen* screen = Show();
        Choose(screen, "mnuFile(0)");
        return screen;
    }
    static std::string Data(Screen* screen, int box) {
        return FromQt(Find<QPlainTextEdit>(screen, QStringLiteral("txtData(%1)").arg(box))->toPlainText());
    }
    static std::string Cell(Screen* screen, int row, int col) {
        return FromQt(Find<QTableView>(screen, "Grid1")->model()->index(row, col).data().toString());
    }
    static std::string Copied(Screen* screen) {
        Choose(screen, "mnuCopy");
        return FromQt(QGuiApplication::clipboard()->text());
    }
};

TEST_F(TableScreen, ShowsHeadHeadsAndRowsAndCopiesThem) {
    Screen* screen = Open("SAMPLES.TAB");
    EXPECT_EQ(Data(screen, 1), "1\t10\t10\t\n-179.5\t-120.5\t-119\t\n59.00\tN/A\t");
    EXPECT_EQ(FromQt(Find<QLabel>(screen, "Label1(7)")->text()), "Ref. : Ag/AgCl R7");
    auto* grid = Find<QTableView>(screen, "Grid1");
    const auto* model = qobject_cast<TableModel*>(grid->model());
    EXPECT_EQ(FromQt(grid->model()->headerData(5, Qt::Horizontal).toString()), "mol/L");
    EXPECT_EQ(Cell(screen, 1, 1), "Brook µ°");

    grid->selectionModel()->select(model->index(0, 1), QItemSelectionModel::Select);
    grid->selectionModel()->select(model->index(1, 2), QItemSelectionModel::Select);
    EXPECT_EQ(Copied(screen), "Tap 1\t\n\t09:07\n") << "what lies between is empty";
    const std::string megabyte(1'000'000, 'x');
    table.Shown().SetCell(1, 1, megabyte);
    table.Shown().txtData[7] = table.Shown().Label1[9] = megabyte;
    table.Shown().HeadChanged();
    for (const std::string& shown :
         {Cell(screen, 0, 1), Data(screen, 7), FromQt(Find<QLabel>(screen, "Label1(9)")->text())})
        EXPECT_EQ(shown, std::string(2000, 'x') + "…");
    grid->selectionModel()->select(model->index(0, 1), QItemSelectionModel::ClearAndSelect);
    EXPECT_EQ(Copied(screen).size(), megabyte.size() + 1) << "whole where it goes on";

    table.Save();
    Choose(screen, "mnuFile(1)");
    EXPECT_EQ(
        Show()->StatusText(),
        "Saved to A.TAB. Row 2 of 2 is not in the file. Of the head only the first two lines are in the file; A.TAB~ "
        "beside it has the whole one. Export, CSV or XLSX in the table screen writes all rows with the whole head.");
}

TEST_F(TableScreen, FollowsTheTableWhileItIsShown) {
    Screen* screen = Show();
    auto* model = Find<QTableView>(screen, "Grid1")->model();
    table.AddRow(" 1\ta");
    EXPECT_EQ(model->rowCount(), 2);
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
    Key(screen, Qt::Key_Escape);
    EXPECT_FALSE(screen->isVisible());
    EXPECT_TRUE(screens.IsLoaded(ScreenCode::frmQSave)) << "measured rows are still to be saved";
    state.TableOpen = 0;
    screen->close();
    ProcessEvents();
    EXPECT_FALSE(screens.IsLoaded(ScreenCode::frmQSave));
}

TEST_F(TableScreen, TellsTheIntervalOfARowAndTheReplicatesOfSeveral) {
    table.AddRow(" 1\tTap\t09:05\t30\t35.85\t1.89E-3\t25\t77.0\t7.5",
                 {{"value", "35.9"}, {"low", "32.9"}, {"high", "39.0"}, {"unit", "ppm"}});
    table.AddRow(" 2\tTap\t09:06\t30.5\t35.14\t1.85E-3\t25\t77.0\t7.5", {{"remark", "beyond"}});
    Screen* screen = Show();
    auto* grid = Find<QTableView>(screen, "Grid1");
    grid->selectRow(0);
    EXPECT_EQ(screen->StatusText(), "35.9 ppm, 32.9 to 39.0 (95 %)");
    const QModelIndex plain = grid->model()->index(0, 4), marked = grid->model()->index(1, 4);
    EXPECT_FALSE(plain.data(Qt::FontRole).value<QFont>().italic());
    EXPECT_TRUE(marked.data(Qt::FontRole).value<QFont>().italic());
    EXPECT_EQ(marked.data(Qt::ToolTipRole), "beyond");
    EXPECT_EQ(Copied(screen).find('\n'), Copied(screen).size() - 1) << "one row is no replicate";
    grid->selectionModel()->select(grid->model()->index(1, 1), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    const std::string line = screen->StatusText();
    EXPECT_TRUE(line.starts_with("n 2; mean 30.25 mV, s 0.35; mean 35.50 ppm, s 0.50, RSD 1.41 %")) << line;
    const QString copied = ToQt(Copied(screen));
    EXPECT_TRUE(copied.contains("\t35.14\t") && copied.contains("\n\nReplicates\tmV\tppm\nn\t2\t2\n"));
    grid->selectionModel()->select(QItemSelection(grid->model()->index(0, 4), grid->model()->index(1, 4)),
                                   QItemSelectionModel::ClearAndSelect);
    EXPECT_TRUE(screen->StatusText().starts_with("n 2; "));
    EXPECT_EQ(Copied(screen), "35.85\n35.14\n") << "one column stays cells";
    grid->clearSelection();
    const std::string noneInHand = "A remark goes with the rows in italics; it is told here for the row in hand.";
    EXPECT_EQ(screen->StatusText(), noneInHand);
    files.Expect(Path("out"));
    Choose(screen, "mnuExportTo(0)");
    EXPECT_NE(Content("out.csv").find("7.5,35.9,32.9,39.0,,\r\n"), std::string::npos) << Content("out.csv");
    grid->clearSelection();
    EXPECT_EQ(screen->StatusText(), "Exported to out.csv, the head to out-head.csv.") << "a remark stays";
}

TEST_F(TableScreen, ResultsStandBesideTheTableAndAreCorrectedThere) {
    const auto add = [&](const char* sample, const char* mv, const char* ppm) {
        table.AddRow(std::string(" 1\t") + sample + "\t09:05\t" + mv + "\t" + ppm + "\t1.89E-3\t26\t77.0\t7.5",
                     {{"low", "32.9"},
                      {"high", "39.0"},
                      {"unit", "ppm"},
                      {"calicelsius", "25"},
                      {"line", "4 -58 -3.5 75 5 0.4242640687 18998.4 -11.7 162.3"}});
    };
    add("Tap", "30", "35.85");
    add("Tap", "30.5", "35.14");
    add("Brook", "60", "10.90");
    Screen* screen = Show();
    Choose(screen, "mnuResults");
    Screen* results = Shown(ScreenCode::frmResults);
    auto* list = Find<QTableView>(results, "grdResults");
    auto* rows = Find<QTableWidget>(results, "grdRows");
    const auto cell = [&](int row, int col) { return FromQt(list->model()->index(row, col).data().toString()); };
    EXPECT_EQ(cell(0, 0) + cell(0, 1) + cell(1, 0), "Tap2Brook");
    rows->setCurrentCell(1, 0);
    prompts.ExpectInput("Strike Out", "bubble");
    Choose(results, "mnuRStrike");
    EXPECT_EQ(cell(0, 1) + FromQt(rows->item(1, 3)->text()), "1struck out: bubble");
    EXPECT_TRUE(rows->item(1, 0)->font().strikeOut());
    auto* grid = Find<QTableView>(screen, "Grid1");
    EXPECT_TRUE(grid->model()->index(1, 4).data(Qt::FontRole).value<QFont>().strikeOut());
    Choose(results, "mnuRTakeBack");
    EXPECT_EQ(cell(0, 1), "2");

    auto* factor = Find<EntryBox>(results, "txtCorrection(0)");
    factor->setFocus();
    QTest::keyClicks(factor, "1,5");
    QTest::keyClick(factor, Qt::Key_Return);
    EXPECT_EQ(results->StatusText(), "A dilution factor is a number above 0, with a point instead of the comma.");
    factor->setFocus();
    factor->selectAll();
    QTest::keyClicks(factor, "10");
    list->setFocus();
    EXPECT_EQ(cell(0, 2) + " " + cell(0, 10), "355 10") << "typed without Enter";
    add("Tap", "30.2", "35.56");
    EXPECT_TRUE(QTest::qWaitFor([&] { return cell(0, 1) == "3"; }, PatienceMs));
    EXPECT_EQ(cell(0, 3), "339");
    Choose(screen, "mnuBack");
    ProcessEvents();
    EXPECT_FALSE(screens.IsLoaded(ScreenCode::frmResults)) << "it goes with its screen";
}

TEST_F(TableScreen, SampleNumbersAreTypedOrComeFromAList) {
    for (int i = 0; i < 3; ++i)
        table.AddRow(" 1\t\t09:05\t30\t35.85\t1.89E-3\t25\t77.0\t7.5");
    Screen* screen = Show();
    auto* grid = Find<QTableView>(screen, "Grid1");
    grid->setCurrentIndex(grid->model()->index(0, 1));
    // A scanner: letters and Enter, line after line.
    for (const char* code : {"A1", "B2"}) {
        QTest::keyClick(grid, *code);
        auto* box = grid->findChild<QLineEdit*>(QStringLiteral("txtNumber"));
        ASSERT_NE(box, nullptr);
        QTest::keyClicks(box, code + 1);
        QTest::keyClick(box, Qt::Key_Return);
        ProcessEvents();
    }
    EXPECT_EQ(Cell(screen, 0, 1) + Cell(screen, 1, 1) + std::to_string(grid->currentIndex().row()), "A1B22");
    EXPECT_FALSE(grid->model()->flags(grid->model()->index(0, 3)) & Qt::ItemIsEditable) << "a potential is measured";
    std::ofstream(Path("list.txt")) << "X1;2\nX2\n";
    files.Expect(Path("list.txt"));
    Choose(screen, "mnuSampleList(0)");
    EXPECT_EQ(screen->StatusText(), "Next sample: X1 (1 of 2); 3 rows left.");
    table.AddRow(" 4\t\t09:05\t30\t35.85\t1.89E-3\t25\t77.0\t7.5");
    EXPECT_EQ(Cell(screen, 3, 1), "X1");
    prompts.ExpectMessage("Next sample: X1 (2 of 2); 2 rows left.\n\nX1 (2 of 2)\nX2");
    Choose(screen, "mnuSampleList(2)");
    OnModal([](Screen* number) {
        EXPECT_EQ(Text(number, "Text1"), "X1") << "offered where the number is asked for";
        Key(number, Qt::Key_Return);
    });
    screens.ShowModal(ScreenCode::frmMsg);
    EXPECT_EQ(dataTable.Cell(4, 1), "X1");
}

TEST_F(TableScreen, TheNewestRowIsWholeInSightAtAnySizeUntilSomebodyLooksElsewhere) {
    for (int i = 1; i <= 60; ++i)
        table.AddRow(" " + std::to_string(i) + "\ta\t09:05\t-150.2");
    Screen* screen = Show();
    auto* grid = Find<QTableView>(screen, "Grid1");
    const auto inSight = [&](int row) {
        const QRect cell = grid->visualRect(grid->model()->index(row, 1));
        return cell.top() >= 0 && cell.bottom() < grid->viewport()->height();
    };
    for (const QSize& size : {QSize(1366, 700), {1024, 680}, {800, 500}, {1300, 620}}) {
        screen->resize(size);
        ProcessEvents();
        EXPECT_TRUE(inSight(59) && inSight(60)) << size.width();
    }
    table.AddRow(" 61\ta\t09:06\t-150.2");
    ProcessEvents();
    EXPECT_TRUE(inSight(60) && inSight(61));
    grid->scrollToTop();
    screen->resize(1000, 560);
    ProcessEvents();
    EXPECT_TRUE(inSight(0)) << "what is looked at stays";
    EXPECT_EQ(FromQt(grid->model()->headerData(60, Qt::Vertical).toString()), "61");
    EXPECT_EQ(FromQt(grid->model()->headerData(61, Qt::Vertical).toString()), "") << "the empty row has no number";
}

TEST_F(TableScreen, RowsAreNumberedOnceAndAllColumnsFitTheSmallestDisplay) {
    state.ReturnScreen = static_cast<std::int16_t>(ScreenCode::frmDsply);
    state.pHMode = -1;
    for (int i = 1; i <= 12; ++i)
        table.AddRow(" " + std::to_string(i) + "\tS1\t09:05:00\t6.66\t20.10\t25.0\t77.0\t6.98\t1.40\t25.0\t77.0");
    Screen* screen = Show();
    screen->resize(1024, 690);
    ProcessEvents();
    auto* grid = Find<QTableView>(screen, "Grid1");
    EXPECT_FALSE(grid->isColumnHidden(0) || grid->verticalHeader()->isVisible());
    EXPECT_EQ(Cell(screen, 11, 0), " 12");
    EXPECT_EQ(grid->horizontalScrollBar()->maximum(), 0);
}

TEST_F(TableScreen, FindAndOrderAreForLookingOnly) {
    table.AddRow(" 1\tTap\t09:05\t-150.2\t9.00");
    table.AddRow(" 2\tBrook\t09:06\t-100\t10.00");
    table.AddRow(" 3\tTap\t09:07\t-120\t1.00");
    Screen* screen = Show();
    auto* grid = Find<QTableView>(screen, "Grid1");
    const auto names = [&] {
        std::string all;
        for (int row = 0; row < 4; ++row)
            all += FromQt(grid->model()->headerData(row, Qt::Vertical).toString()) + Cell(screen, row, 1) + " ";
        return all;
    };
    const auto click = [&](int col) {
        const QHeaderView* heads = grid->horizontalHeader();
        const QPoint place(heads->sectionViewportPosition(col) + 5, heads->height() / 2);
        QTest::mouseClick(heads->viewport(), Qt::LeftButton, {}, place);
        ProcessEvents();
    };
    for (const char* order : {"3Tap 1Tap 2Brook  ", "2Brook 1Tap 3Tap  ", "1Tap 2Brook 3Tap  ", "3Tap 1Tap 2Brook  "}) {
        click(4);
        EXPECT_EQ(names(), order);
    }
    EXPECT_TRUE(dataTable.Cell(1, 1) == "Tap" && dataTable.Cell(2, 1) == "Brook");
    grid->selectRow(0);
    EXPECT_NE(Copied(screen).find("\t-120\t1.00"), std::string::npos) << "the row that is seen";

    QTest::keyClick(screen, Qt::Key_F, Qt::ControlModifier);
    Choose(screen, "mnuFind(0)");
    auto* text = Find<QLineEdit>(screen, "txtFind");
    ASSERT_TRUE(text->isVisible());
    QTest::keyClicks(text, "tap");
    std::string found;
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(text, Qt::Key_Return);
        found += std::to_string(grid->currentIndex().row());
    }
    EXPECT_TRUE(found == "101" || found == "010") << found;
    QTest::keyClicks(text, "nowhere");
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(screen->StatusText(), "\"tapnowhere\" is not in the table.");
    QTest::keyClick(text, Qt::Key_Escape);
    EXPECT_TRUE(!text->isVisible() && screen->isVisible()) << "Escape closes the line first";
    table.AddRow(" 4\tWell\t09:08\t-130\t2.00");
    EXPECT_EQ(Cell(screen, 3, 1), "Well") << "a new row brings the own order back";
}

TEST_F(TableScreen, AHeadWiderThanItsBoxCanBeScrolled) {
    state.CaliPoints = 10;
    state.CaliPpm.assign(11, 1000);
    state.CaliE.assign(11, -100.5f);
    state.CaliLogC.assign(11, -3);
    Screen* screen = Show();
    screen->resize(1024, 700);
    ProcessEvents();
    auto* standards = Find<QPlainTextEdit>(screen, "txtData(1)");
    const QScrollBar* bar = standards->horizontalScrollBar();
    EXPECT_TRUE(bar->isVisible() && bar->maximum() > 0);
    EXPECT_GE(standards->viewport()->height(), 3 * standards->fontMetrics().lineSpacing())
        << "none of its lines is cut";
    EXPECT_FALSE(Find<QPlainTextEdit>(screen, "txtData(4)")->horizontalScrollBar()->isVisible());
}

TEST_F(TableScreen, ALongStepLeavesTheScreenAliveAndCanBeCancelled) {
    Screen* screen = Show();
    QTimer tick;
    int ticks = 0;
    QObject::connect(&tick, &QTimer::timeout, [&] { ++ticks; });
    tick.start(1);
    QtProgress progress(screen, "Exporting.");
    QElapsedTimer limit;
    limit.start();
    QProgressDialog* dialog = nullptr;
    while (dialog == nullptr && limit.elapsed() < PatienceMs) {
        EXPECT_TRUE(progress.At(1, 100));
        dialog = screen->findChild<QProgressDialog*>("progress");
    }
    EXPECT_GT(ticks, 0) << "what waits is done meanwhile";
    ASSERT_TRUE(dialog != nullptr && dialog->isModal()) << "keys and clicks reach the dialog alone";
    while (dialog->value() != 50 && limit.elapsed() < PatienceMs)
        progress.At(50, 100);
    EXPECT_EQ(dialog->value(), 50);
    while (dialog->value() != 99 && limit.elapsed() < PatienceMs)
        EXPECT_TRUE(progress.At(100, 100));
    EXPECT_TRUE(dialog->isVisible()) << "what is left to do after the last row is still to come";
    QTest::keyClick(dialog, Qt::Key_Escape);
    EXPECT_FALSE(progress.At(100, 100));
}

TEST_F(TableScreen, NumbersOrDropsTheRowJustAdded) {
    const auto addRow = [this](const char* row, std::function<void(Screen*)> answer) {
        table.AddRow(row);
        OnModal(std::move(answer));
        screens.ShowModal(ScreenCode::frmMsg);
        ProcessEvents();
    };
    state.TableFile = Path("LIVE.TAB");
    addRow(" 1\t\t09:05", [](Screen* number) {
        EXPECT_EQ(FromQt(Find<QLabel>(number, "Label1")->text()),
                  "To save the data, please type the sample number in the box below, then click on \"Ok\". ");
        Put(number, "S 1");
    });
    EXPECT_EQ(state.QuickCount + state.CaliDirty, 2);
    EXPECT_NE(Content("LIVE.TAB").find("1\tS 1\t09:05"), std::string::npos) << "what was measured stands on disk";
    addRow(" 2\t\t09:06", [](Screen* number) { Click(number, "Command1(1)"); });
    EXPECT_EQ(dataTable.Rows(), 3) << "Cancel undoes the row";
    EXPECT_EQ(Content("LIVE.TAB").find("09:06"), std::string::npos);
    addRow(" 2\t\t09:07", [](Screen* number) { Enter(number); });
    EXPECT_EQ(dataTable.Rows(), 4) << "an empty number is accepted";
}

}  // namespace
}  // namespace kelvo::test
