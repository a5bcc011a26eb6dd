#include <QPdfWriter>
#include <QPrinterInfo>

#include "help/HelpSheet.h"
#include "help/ManualView.h"
#include "help/NoteEdit.h"
#include "help/PictureInText.h"
#include "support/ScreenFixture.h"

namespace kelvo::test {
namespace {

class HelpScreens : public ScreenFixture {
 protected:
    void SetUp() override {
        ScreenFixture::SetUp();
        for (const HelpDocument& document : HelpDocuments())
            std::filesystem::copy_file(SourceDir() + "packaging/" + document.file, folder / document.file);
    }

    Screen* Working(ScreenCode code) {
        screens.Show(code);
        return Shown(code);
    }
    static NoteEdit* Pad(Screen* sheet) { return Find<NoteEdit>(sheet, "txtinfo"); }
    static std::string Advice(Screen* sheet) { return FromQt(Find<QTextBrowser>(sheet, "txtadvice")->toPlainText()); }
    static bool Has(const std::string& text, const char* part) { return text.find(part) != std::string::npos; }
};

/// Every working screen by its menu and by F1: caption, advice, and a note that stands in its file.
TEST_F(HelpScreens, NotesAndF1OpenTheSheetOfTheScreen) {
    using enum ScreenCode;
    // the screen, the item of its Help menu (none: F1); caption, file of the note pad, advice
    const std::tuple<const char*, ScreenCode, const char*, const char*, const char*, const char*> roads[] = {
        {"selectivity", frmselity, "mnuHelp(0)", "Selectivity", "info4.txt", "arbitrary ppm value"},
        {"conversion", frmcnvs, "mnuHelp(0)", "Conversion of Concentration", "info5.txt", "vice verce"},
        {"activity", frmacft, "mnuHelp(0)", "Activity Cofficients", "info6.txt", "ion box"},
        {"calibration setup", frmsetup, "mnuHelp(0)", "Calibration", "info0.txt", "various parameters"},
        {"standard addition", frmStanad01, "mnuHelp(0)", "Standard Addtion", "info2.txt",
         "Avoid adding less than 10% of the sample volume."},
        {"sample addition", frmSampa, "mnuHelp(0)", "Sample Addtion", "info3.txt",
         "please double click on the on-line box"},
        {"data table", frmQSave, "mnuHelp(0)", "pH Measurement", "info8.txt", "Care of pH"},
        {"selectivity by F1", frmselity, "", "Selectivity", "info4.txt", "must be absent"},
        {"point dialog by F1", fmpaidat, "", "Calibration", "info0.txt", "various parameters"},
        {"potentiometry", fmISEcli, "mnuHelp(0)", "Direct Potentiometry", "info1.txt", "main working area"},
    };
    for (const auto& [name, from, item, title, file, advice] : roads) {
        SCOPED_TRACE(name);
        state.HelpTopic = from == fmISEcli ? 1 : 7;
        state.PhPath = {0, 0, 1, 0, 0};
        const std::string note = std::string("note of ") + name;
        Screen* host = Working(from);
        OnModal([&, caption = title, words = advice](Screen* sheet) {
            EXPECT_EQ(FromQt(sheet->windowTitle()), "  Help Sheet and Note pad" + std::string(caption));
            EXPECT_TRUE(Has(Advice(sheet), words)) << Advice(sheet);
            EXPECT_EQ(Focus(sheet), "txtinfo");
            Pad(sheet)->selectAll();
            Keys(sheet, note.c_str());
            Click(sheet, "cmdback");
        });
        if (item[0] == '\0')
            Key(host, Qt::Key_F1);
        else
            Choose(host, item);
        EXPECT_FALSE(screens.IsLoaded(frminfo));
        EXPECT_EQ(Content(file), note + "\r\n");
        screens.Close(from);
    }
}

TEST_F(HelpScreens, IntroductionsAndSetupShowTheirFileWithoutAPad) {
    const auto document = [](const char* caption, const char* holds) {
        return [=](Screen* sheet) {
            EXPECT_EQ(FromQt(sheet->windowTitle()), caption);
            EXPECT_TRUE(Has(FromQt(Find<QTextBrowser>(sheet, "txtinfo")->toPlainText()), holds));
            EXPECT_FALSE(Find<QPushButton>(sheet, "cmdmenu")->isVisible());
            Key(sheet, Qt::Key_Escape);
        };
    };
    for (const auto& [branch, caption, holds] : {std::tuple(1, "Introduction to ISE measurement", "E = Eo + S · LogC"),
                                                 {0, "Introduction to pH measurement", "phosphate"}}) {
        state.MenuBranch = branch;
        Screen* menu = Working(ScreenCode::frmenu);
        OnModal(document(caption, holds));
        Click(menu, "cmdSub(0)");
        EXPECT_TRUE(menu->isVisible());
    }
    OnModal(document("Hardware Setup", "Channel 1 and channel 2"));
    Choose(Working(ScreenCode::frmHware), "mnuHelp(0)");
}

TEST_F(HelpScreens, SecondSheetByPictureOrButtonAndBack) {
    for (const auto& [topic, path, begins] :
         {std::tuple(1, 0, "When a result looks odd"), {7, 1, "Testing of pH Electrodes"}, {2, 0, ""}}) {
        SCOPED_TRACE(topic);
        state.HelpTopic = static_cast<std::int16_t>(topic);
        state.PhPath = {0, 0, static_cast<std::int16_t>(path), 0, 0};
        OnModal([&, words = begins](Screen* sheet) {
            const bool second = *words != '\0';
            for (const char* way : {"Image1", "cmdnext"}) {
                EXPECT_EQ(Find<QAbstractButton>(sheet, way)->isVisible(), second);
                if (!second) continue;
                OnModal([&](Screen* next) {
                    EXPECT_EQ(next->windowTitle(), sheet->windowTitle());
                    EXPECT_TRUE(Advice(next).starts_with(words)) << Advice(next);
                    Click(next, way[0] == 'I' ? "Image1" : "cmdfirst");
                });
                Click(sheet, way);
                EXPECT_FALSE(screens.IsLoaded(ScreenCode::frminfo2));
            }
            Key(sheet, Qt::Key_Escape);
        });
        screens.ShowModal(ScreenCode::frminfo);
    }
}

TEST_F(HelpScreens, MainMenuLeavesTheSheetAndItsScreen) {
    Screen* host = Working(ScreenCode::frmselity);
    OnModal([](Screen* sheet) { Click(sheet, "cmdmenu"); });
    Choose(host, "mnuHelp(0)");
    Shown(ScreenCode::frmenu);
    EXPECT_FALSE(screens.IsLoaded(ScreenCode::frmselity));
    screens.Close(ScreenCode::frmenu);
    OnModal([](Screen* sheet) { Click(sheet, "cmdmenu"); });
    screens.ShowModal(ScreenCode::frminfo);
    Shown(ScreenCode::frmenu);
}

/// What is pasted, what the pad then holds, what the status bar says of the rest.
TEST_F(HelpScreens, PadTakesEveryCharacterAndTellsWhatItLeavesOut) {
    state.HelpTopic = 2;
    OnModal([](Screen* sheet) {
        NoteEdit* pad = Pad(sheet);
        const char* const rows[][3] = {{"−1 Ω → ≥ 日 \U0001F600", "−1 Ω → ≥ 日 \U0001F600", ""},
                                       {"a\x01→b", "a→b", "Control"},
                                       {"one\ttwo\r\nthree", "one\ttwo\nthree", ""},
                                       {"a\u00A0b", "a\u00A0b", ""}};
        for (const auto& [text, taken, says] : rows) {
            pad->clear();
            QGuiApplication::clipboard()->setText(QString::fromUtf8(text));
            pad->paste();
            EXPECT_EQ(pad->Text(), taken);
            EXPECT_TRUE(Has(sheet->StatusText(), says)) << sheet->StatusText();
        }
        pad->clear();
        QKeyEvent key(QEvent::KeyPress, 0, Qt::NoModifier, QStringLiteral("→"));
        QCoreApplication::sendEvent(pad, &key);
        QInputMethodEvent event;
        event.setCommitString(QStringLiteral("日"));
        QCoreApplication::sendEvent(pad, &event);
        EXPECT_EQ(pad->Text(), "→日");
        // The pair of the smiling face would be cut in two at the last place.
        constexpr std::size_t Room = NotePad::LongestText - 3;
        QGuiApplication::clipboard()->setText(QString(Room, u'x') + QString::fromUtf8("\U0001F600"));
        pad->paste();
        EXPECT_EQ(pad->Text(), "→日" + std::string(Room, 'x'));
        EXPECT_TRUE(Has(sheet->StatusText(), "1 MB"));
        pad->selectAll();
        QGuiApplication::clipboard()->setText(QString(Room + 3, u'x'));
        pad->paste();
        EXPECT_EQ(pad->Text().size(), NotePad::LongestText) << "what is selected makes room";
        for (const bool input : {false, true}) {
            QCoreApplication::sendEvent(pad, input ? static_cast<QEvent*>(&event) : &key);
            EXPECT_TRUE(Has(sheet->StatusText(), "1 MB"));
        }
        EXPECT_EQ(pad->Text().size(), NotePad::LongestText);
        pad->setPlainText(QStringLiteral("≥ xy"));
        Key(sheet, Qt::Key_Escape);
    });
    screens.ShowModal(ScreenCode::frminfo);
    EXPECT_EQ(Content("info2.txt"), "≥ xy\r\n");
}

/// Words are not looked for in a line that would take half a minute.
TEST_F(HelpScreens, AMegabyteInOneLineIsWrappedAnywhere) {
    NoteEdit pad;
    const std::string line(60'000, 'x');
    for (const auto& [text, mode] : {std::pair(line, QTextOption::WrapAnywhere),
                                     {"a b\n" + line + "\nc", QTextOption::WrapAnywhere},
                                     {"a b\nc", QTextOption::WrapAtWordBoundaryOrAnywhere}}) {
        pad.SetText(text);
        EXPECT_EQ(pad.wordWrapMode(), mode);
        EXPECT_EQ(pad.Text(), text);
    }
    for (const std::string& text : {"one\n" + line.substr(0, 40'000), line.substr(0, 20'000)}) {
        QGuiApplication::clipboard()->setText(ToQt(text));
        pad.moveCursor(QTextCursor::End);
        pad.paste();
    }
    EXPECT_EQ(pad.wordWrapMode(), QTextOption::WrapAnywhere) << "two pastes make one line";
    EXPECT_EQ(pad.Text(), "a b\ncone\n" + line);
}

/// The sheet is closed by everything that can close it, and the pad is in its file each time.
TEST_F(HelpScreens, AClosedSheetIsASavedPad) {
    const std::pair<const char*, std::function<void(Screen*)>> ways[] = {
        {"Back", [](Screen* sheet) { Click(sheet, "cmdback"); }},
        {"Escape", [](Screen* sheet) { Key(sheet, Qt::Key_Escape); }},
        {"frame", [](Screen* sheet) { sheet->close(); }},
        {"menu", [](Screen* sheet) { Choose(sheet, "mnuFile(1)"); }},
        {"closed by number", [this](Screen*) { screens.CloseSubScreen(10); }},
        {"end of the session", [this](Screen*) { screens.EndProgram(); }},
    };
    state.HelpTopic = 3;
    for (const auto& [name, leave] : ways) {
        SCOPED_TRACE(name);
        OnModal([&](Screen* sheet) {
            Pad(sheet)->setPlainText(QString::fromLatin1(name));
            leave(sheet);
        });
        screens.ShowModal(ScreenCode::frminfo);
        ProcessEvents();
        EXPECT_FALSE(screens.IsLoaded(ScreenCode::frminfo));
        EXPECT_EQ(Content("info3.txt"), std::string(name) + "\r\n");
    }
}

TEST_F(HelpScreens, AFailedSaveKeepsTheTextOnTheSheet) {
    state.HelpTopic = 2;
    state.HelpPath = Path("gone/");
    const std::string error = "Error76Saving" + state.HelpPath + "info2.txt:Path not found.";
    OnModal([&](Screen* sheet) {
        Keys(sheet, "typed");
        prompts.ExpectMessage(error);
        Key(sheet, Qt::Key_Escape);
        EXPECT_TRUE(sheet->isVisible());
        EXPECT_EQ(Pad(sheet)->Text(), "typed");
        EXPECT_NE(sheet->StatusText(), "");
        prompts.ExpectMessage(error);
        prompts.ExpectAsk("The note has not been saved. Would you like to leave the sheet without it?", true);
        sheet->close();
    });
    screens.ShowModal(ScreenCode::frminfo);
    EXPECT_FALSE(screens.IsLoaded(ScreenCode::frminfo));
}

TEST_F(HelpScreens, SearchIsOneKeyFurtherAndItsHitsOpenTheSheet) {
    std::ofstream(folder / "info5.txt") << "pipette 7 leaks\r\n";
    Screen* host = Working(ScreenCode::frmselity);
    OnModal([&](Screen* sheet) {
        Keys(sheet, "mine");
        Key(sheet, Qt::Key_F1);
        EXPECT_EQ(Focus(sheet), "txtfind");
        Keys(sheet, "no such word");
        EXPECT_TRUE(Has(sheet->StatusText(), "Nothing"));
        Key(sheet, Qt::Key_Escape);
        EXPECT_TRUE(sheet->isVisible() && Find<QTextBrowser>(sheet, "txtadvice")->isVisible());
        Keys(sheet, "LEAKS pipette");
        EXPECT_EQ(Find<QListWidget>(sheet, "lstfound")->count(), 1);
        Enter(sheet);
        EXPECT_EQ(FromQt(sheet->windowTitle()), "  Help Sheet and Note padConversion of Concentration");
        EXPECT_EQ(Pad(sheet)->Text(), "pipette 7 leaks");
        EXPECT_EQ(Content("info4.txt"), "mine\r\n") << "the pad that was left is saved";
        Key(sheet, Qt::Key_F, Qt::ControlModifier);
        Keys(sheet, "borax");
        Key(sheet, Qt::Key_Down);
        Enter(sheet);
        EXPECT_EQ(FromQt(sheet->windowTitle()), "Introduction to pH measurement");
        Key(sheet, Qt::Key_Escape);
    });
    Key(host, Qt::Key_F1);
    EXPECT_EQ(state.HelpTopic, 4) << "looking elsewhere does not move the screen";
}

TEST_F(HelpScreens, TextGrowsAndIsPrinted) {
    state.HelpTopic = 1;
    OnModal([&](Screen* sheet) {
        auto* advice = Find<QTextBrowser>(sheet, "txtadvice");
        const double before = advice->document()->begin().charFormat().fontPointSize();
        Choose(sheet, "mnuView(0)");
        EXPECT_NEAR(advice->document()->begin().charFormat().fontPointSize(), before * 1.15, 0.01);
        Choose(sheet, "mnuView(2)");
        EXPECT_NEAR(advice->document()->begin().charFormat().fontPointSize(), before, 0.01);
        Keys(sheet, "printed note");
        files.Expect(Path("sheet"));
        Choose(sheet, "mnuFile(0)");
        Key(sheet, Qt::Key_Escape);
    });
    screens.ShowModal(ScreenCode::frminfo);
    EXPECT_TRUE(Content("sheet.pdf").starts_with("%PDF-"));
    EXPECT_GT(Content("sheet.pdf").size(), 10000U);
}

TEST_F(HelpScreens, APrintedPictureIsAsLargeAsTheShownOne) {
    QTextDocument text;
    QTextCharFormat format;
    format.setProperty(PictureInText::WidthProperty, 260.0);
    PictureInText picture({}, &text);
    EXPECT_NEAR(picture.intrinsicSize(&text, 0, format).width(), 260, 1);
    QPdfWriter page(ToQt(Path("page.pdf")));
    page.setResolution(1200);
    text.documentLayout()->setPaintDevice(&page);
    EXPECT_NEAR(picture.intrinsicSize(&text, 0, format).width(), 260 * 1200 / 96, 1);
    text.documentLayout()->setPaintDevice(nullptr);
}

/// Every chapter that a sheet names, and every link between the pages, leads somewhere.
TEST_F(HelpScreens, LinksOfTheManualHold) {
    ManualView view;
    QSet<QString> links;
    for (const HelpSheetRow& row : HelpSheets())
        links.insert(QString::fromLatin1(row.chapter));
    for (const HelpDocument& document : HelpDocuments())
        links.insert(QString::fromLatin1(document.chapter));
    for (const QString& page : QDir(QStringLiteral(":/manual")).entryList({QStringLiteral("manual*.md")})) {
        ASSERT_TRUE(view.Open(page));
        for (QTextBlock block = view.document()->begin(); block.isValid(); block = block.next())
            for (auto part = block.begin(); !part.atEnd(); ++part) {
                const QString link = part.fragment().charFormat().anchorHref();
                if (!link.isEmpty() && !link.contains(QStringLiteral("://")))
                    links.insert(link.startsWith(QLatin1Char('#')) ? page + link : link);
            }
    }
    for (const QString& link : links)
        EXPECT_TRUE(view.Open(link)) << link.toStdString();
    EXPECT_FALSE(view.Open(QStringLiteral("manual.md#no-such-chapter")));
    EXPECT_EQ(HeadingAnchor(QStringLiteral("Conversion / Dilution")), QStringLiteral("conversion-dilution"));
}

TEST_F(HelpScreens, ManualOpensOverAModalSheetAndFromScreensWithoutOne) {
    Screen* start = Working(ScreenCode::frmtxt);
    Key(start, Qt::Key_F1);
    Screen* manual = Shown(ScreenCode::frmManual);
    EXPECT_TRUE(Has(FromQt(Find<QTextBrowser>(manual, "txtmanual")->toPlainText()), "Kelvo manual"));
    Key(manual, Qt::Key_Escape);
    EXPECT_FALSE(screens.IsLoaded(ScreenCode::frmManual));
    state.HelpTopic = 4;
    OnModal([&](Screen* sheet) {
        OnModal([](Screen* pages) {
            EXPECT_TRUE(Has(FromQt(Find<QTextBrowser>(pages, "txtmanual")->source().toString()), "ise-selectivity"));
            Key(pages, Qt::Key_Escape);
        });
        Click(sheet, "cmdmanual");
        Key(sheet, Qt::Key_Escape);
    });
    screens.ShowModal(ScreenCode::frminfo);
}

TEST_F(HelpScreens, AboutTellsWhatAReportNeeds) {
    Screen* host = Working(ScreenCode::frmselity);
    OnModal([&](Screen* about) {
        EXPECT_EQ(FromQt(Find<QPushButton>(about, "cmdOK")->text()), "Ok");
        EXPECT_EQ(FromQt(Find<QLabel>(about, "lbltxt(1)")->text()), "Kelvo");
        EXPECT_TRUE(Has(FromQt(Find<QLabel>(about, "txtWin")->text()), "Redox (ORP)"));
        Click(about, "cmdcopy");
        const std::string report = FromQt(QGuiApplication::clipboard()->text());
        for (const std::string& part : {std::string("Kelvo "), std::string("Qt ") + qVersion(), std::string("zlib 1."),
                                        std::string("Boost.Math 1."), state.AppPath, state.IniPath})
            EXPECT_NE(report.find(part), std::string::npos) << part;
        Click(about, "cmdOK");
    });
    Choose(host, "mnuHelp(1)");
    state.NorvakCaption = "Start";
    state.AboutIsStart = true;
    Screen* opening = Working(ScreenCode::frmNorvak);
    EXPECT_EQ(opening->findChild<QPushButton*>("cmdcopy"), nullptr) << "the start has no time for it";
}

}  // namespace
}  // namespace kelvo::test
