#include <gtest/gtest.h>

#include <QClipboard>
#include <QSignalSpy>
#include <QtTest>

#include "platform/EntryBox.h"

namespace kelvo {
namespace {

bool Digits(char32_t key) { return key >= U'0' && key <= U'9'; }

struct Fixture {
    std::unique_ptr<EntryBox> box{EntryBox::Number()};
    QSignalSpy refused{box.get(), &EntryBox::Refused};
    QSignalSpy foreign{box.get(), &EntryBox::NotInCodePage};

    Fixture() {
        box->SetFilter(Digits);
        box->SetText(QStringLiteral("12"));
    }
    void Paste(const QString& text) {
        QApplication::clipboard()->setText(text);
        box->paste();
        QCoreApplication::processEvents();
    }
};

TEST(EntryBox, OneFilterForEveryRoad) {
    struct Row {
        const char* name;
        std::function<void(Fixture&)> doing;
        const char* text;
        int refused;
    };
    const std::vector<Row> rows = {
        {"an allowed key", [](Fixture& f) { QTest::keyClicks(f.box.get(), "3"); }, "123", 0},
        {"a refused key changes nothing", [](Fixture& f) { QTest::keyClicks(f.box.get(), "x"); }, "12", 1},
        {"an allowed paste", [](Fixture& f) { f.Paste("345"); }, "12345", 0},
        {"a paste with one wrong character is refused whole", [](Fixture& f) { f.Paste("3,5"); }, "12", 1},
        {"a refused paste keeps the selection it would have replaced",
         [](Fixture& f) {
             f.box->selectAll();
             f.Paste("x");
         },
         "12", 1},
        {"backspace is no character", [](Fixture& f) { QTest::keyClick(f.box.get(), Qt::Key_Backspace); }, "1", 0},
        {"what the program wrote may be edited although no key would be let in",
         [](Fixture& f) {
             f.box->SetText(QStringLiteral("5.26E-02"));
             QTest::keyClicks(f.box.get(), "7");
         },
         "5.26E-027", 0},
        {"a long paste is cut at the box's length",
         [](Fixture& f) { f.Paste(QString(1000, QLatin1Char('7'))); },
         "12777777777777777777777777777777", 0},
    };
    for (const Row& row : rows) {
        Fixture f;
        row.doing(f);
        QCoreApplication::processEvents();
        EXPECT_EQ(f.box->Text(), row.text) << row.name;
        EXPECT_EQ(f.refused.count(), row.refused) << row.name;
    }
}

TEST(EntryBox, CharactersWithoutPlaceInFilesAreRefusedAtEntry) {
    Fixture f;
    f.box->SetFilter(nullptr);
    f.Paste(QStringLiteral("é€°"));
    EXPECT_EQ(f.box->Text(), "12é€°");
    f.Paste(QStringLiteral("Ω"));
    f.Paste(QStringLiteral("two\nlines"));
    EXPECT_EQ(f.box->Text(), "12é€°");
    ASSERT_EQ(f.foreign.count(), 2);
    EXPECT_EQ(f.foreign[0][0].toString(), QStringLiteral("Ω"));
    EXPECT_TRUE(f.foreign[1][0].toString().isEmpty()) << "a line break has no face to show";
}

TEST(EntryBox, EnterStaysInTheBox) {
    QWidget window;
    EntryBox box(&window);
    QSignalSpy entered(&box, &EntryBox::Entered);
    QPushButton button(&window);
    button.setAutoDefault(true);
    button.setDefault(true);
    QSignalSpy clicked(&button, &QPushButton::clicked);
    window.show();
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Return);
    QTest::keyClick(&box, Qt::Key_Enter);
    EXPECT_EQ(entered.count(), 2);
    EXPECT_EQ(clicked.count(), 0);
}

TEST(EntryBox, ColouredGroundCarriesReadableInk) {
    EntryBox box;
    box.SetBackground(4);
    EXPECT_TRUE(box.styleSheet().contains(QStringLiteral("#800000")));
    EXPECT_TRUE(box.styleSheet().contains(QStringLiteral("color: #ffffff")));
    box.SetBackground(14);
    EXPECT_TRUE(box.styleSheet().contains(QStringLiteral("color: #000000")));
    box.SetBackground(-1);
    EXPECT_TRUE(box.styleSheet().isEmpty());
}

}  // namespace
}  // namespace kelvo
