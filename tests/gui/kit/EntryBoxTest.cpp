#include "kit/EntryBox.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QSignalSpy>
#include <QtTest>

namespace kelvo::test {
namespace {

class EntryBoxTest : public testing::Test {
 protected:
    EntryBoxTest() {
        box->SetFilter([](char32_t key) { return key >= U'0' && key <= U'9'; });
        box->SetText(QStringLiteral("12"));
    }
    void Type(const char* keys) { QTest::keyClicks(box.get(), keys); }
    void Paste(const QString& text) {
        QApplication::clipboard()->setText(text);
        box->paste();
    }
    /// What the box holds, and how often it has refused a text.
    std::string Outcome() {
        QCoreApplication::processEvents();
        return box->Text() + '|' + std::to_string(refused.count());
    }

    std::unique_ptr<EntryBox> box{EntryBox::Number()};
    QSignalSpy refused{box.get(), &EntryBox::Refused};
    QSignalSpy foreign{box.get(), &EntryBox::NotInCodePage};
};

TEST_F(EntryBoxTest, OneFilterForEveryRoad) {
    Type("3");
    EXPECT_EQ(Outcome(), "123|0");
    Type("x");
    EXPECT_EQ(Outcome(), "123|1");
    Paste("45");
    EXPECT_EQ(Outcome(), "12345|1");
    box->selectAll();
    Paste("3,5");
    EXPECT_EQ(Outcome(), "12345|2") << "refused whole, and the selection is kept";
    QTest::keyClick(box.get(), Qt::Key_Backspace);
    EXPECT_EQ(Outcome(), "|2") << "backspace is no character";
    Paste(QString(1000, QLatin1Char('7')));
    EXPECT_EQ(Outcome(), std::string(32, '7') + "|2");
    box->SetText(QStringLiteral("5.26E-02"));
    Type("7");
    EXPECT_EQ(Outcome(), "5.26E-027|2") << "what the program wrote may be edited";
}

TEST_F(EntryBoxTest, WhatTheProgramWritesStandsWholeAndWhatIsTypedKeepsItsLimit) {
    const std::string whole(40, '5');
    box->SetText(whole);
    Type("7");
    EXPECT_EQ(Outcome(), whole + "|0") << "no room to type beyond the limit";
    for (int i = 0; i < 10; ++i)
        QTest::keyClick(box.get(), Qt::Key_Backspace);
    Type("777");
    EXPECT_EQ(Outcome(), whole.substr(10) + "77|0");
    box->SetText(whole);
    box->SetText(std::string("1"));
    Paste(QString(100, QLatin1Char('7')));
    EXPECT_EQ(Outcome(), "1" + std::string(31, '7') + "|0");
}

TEST_F(EntryBoxTest, CharactersWithoutPlaceInFilesAreRefusedAtEntry) {
    box->SetFilter(nullptr);
    for (const char* text : {"é€°", "Ω", "two\nlines"})
        Paste(QString::fromUtf8(text));
    EXPECT_EQ(Outcome(), "12é€°|0");
    ASSERT_EQ(foreign.count(), 2);
    EXPECT_EQ(foreign[0][0].toString(), QStringLiteral("Ω"));
    EXPECT_TRUE(foreign[1][0].toString().isEmpty()) << "a line break has no face to show";
}

}  // namespace
}  // namespace kelvo::test
