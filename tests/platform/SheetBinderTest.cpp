#include "platform/SheetBinder.h"

#include <gtest/gtest.h>

#include <QtTest>
#include <QtWidgets>

#include "platform/EntryBox.h"
#include "support/Scripted.h"

namespace kelvo::test {
namespace {

/// Writes down what is handed in; takes digits.
class DiarySheet : public Sheet {
 public:
    explicit DiarySheet(Prompts& prompts) : Sheet(3, prompts) {}

    void Enter(int i) override {
        Note("enter " + std::to_string(i) + "=" + Text(i));
        if (onEnter) onEnter();
    }
    void Left(int i) override { Note("left " + std::to_string(i)); }
    void Emptied(int i) override { Note("emptied " + std::to_string(i)); }
    void Select(int list, int row) override {
        selected = row;
        Note("list " + std::to_string(list) + " row " + std::to_string(row));
    }
    int Selected(int) const override { return selected; }
    void Press(int button) override { Note("button " + std::to_string(button)); }
    bool KeyAllowed(int, char32_t key) const override { return key >= U'0' && key <= U'9'; }
    void KeyRefused(int i) override { Note("refused " + std::to_string(i)); }

    void Note(const std::string& line) { diary += (diary.empty() ? "" : ", ") + line; }
    std::string TakeDiary() {
        QCoreApplication::processEvents();
        return std::exchange(diary, {});
    }

    using Sheet::FocusOn;
    using Sheet::LeadTo;
    using Sheet::Mutable;
    using Sheet::Set;

    std::function<void()> onEnter;
    std::string diary;
    int selected = -1;
};

class SheetBinderTest : public testing::Test {
 protected:
    SheetBinderTest() {
        auto* layout = new QVBoxLayout(&window);
        for (int i = 0; i < 3; ++i) {
            boxes[i] = EntryBox::Number(&window);
            layout->addWidget(boxes[i]);
            binder.Bind(i, boxes[i]);
        }
        list = new QComboBox(&window);
        list->addItems({QStringLiteral("Ag"), QStringLiteral("Ca"), QStringLiteral("Cl"), QStringLiteral("Na")});
        list->setCurrentIndex(-1);
        layout->addWidget(list);
        binder.BindList(0, list);
        button = new QPushButton(&window);
        layout->addWidget(button);
        binder.BindButton(4, button);
        binder.WriteBack();
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    ScriptedPrompts prompts;
    DiarySheet sheet{prompts};
    QWidget window;
    SheetBinder binder{sheet};
    EntryBox* boxes[3] = {};
    QComboBox* list = nullptr;
    QPushButton* button = nullptr;
};

TEST_F(SheetBinderTest, HandsInWhatTheAnalystDoes) {
    boxes[0]->setFocus();
    QTest::keyClicks(boxes[0], QStringLiteral("12"));
    QTest::keyClick(boxes[0], Qt::Key_Return);
    QTest::keyClick(boxes[0], Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(sheet.TakeDiary(), "enter 0=12, enter 0=12");
    QTest::keyClick(boxes[0], Qt::Key_Backspace);
    QTest::keyClick(boxes[0], Qt::Key_Backspace);
    EXPECT_EQ(sheet.TakeDiary(), "emptied 0");
    QTest::keyClick(boxes[0], Qt::Key_Tab);
    EXPECT_EQ(sheet.TakeDiary(), "left 0");
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(sheet.TakeDiary(), "left 1, button 4");
}

TEST_F(SheetBinderTest, RefusesForeignCharactersByEveryRoad) {
    boxes[0]->setFocus();
    QTest::keyClicks(boxes[0], QStringLiteral("1,"));
    EXPECT_EQ(sheet.TakeDiary(), "refused 0");
    for (const char* pasted : {"2,5", " 2", "2 ", "-2", "2e3", "\xce\xa9", "2\n3"}) {
        QGuiApplication::clipboard()->setText(QString::fromUtf8(pasted));
        boxes[0]->paste();
        EXPECT_EQ(sheet.TakeDiary(), "refused 0") << pasted;
        EXPECT_EQ(boxes[0]->Text(), "1") << pasted;
        EXPECT_EQ(sheet.Text(0), "1") << pasted;
    }
}

TEST_F(SheetBinderTest, PassesLongNumbersWhole) {
    const QString number(1000, QLatin1Char('9'));
    QGuiApplication::clipboard()->setText(number);
    boxes[0]->paste();
    EXPECT_EQ(sheet.Text(0), number.toStdString());
    sheet.Set(1, number.toStdString());
    binder.WriteBack();
    EXPECT_EQ(boxes[1]->text(), number);
}

TEST_F(SheetBinderTest, ShowsWhatCameBack) {
    sheet.onEnter = [this] {
        sheet.Set(1, "3.5");
        sheet.Mutable(1).readOnly = true;
        sheet.Mutable(2).enabled = false;
        sheet.LeadTo(0);
        sheet.selected = 2;
        sheet.FocusOn(Sheet::FirstButton + 4);
    };
    boxes[0]->setFocus();
    QTest::keyClick(boxes[0], Qt::Key_Return);
    EXPECT_EQ(boxes[1]->Text(), "3.5");
    EXPECT_TRUE(boxes[1]->isReadOnly());
    EXPECT_FALSE(boxes[2]->isEnabled());
    EXPECT_TRUE(boxes[0]->property("lead").toBool());
    EXPECT_EQ(list->currentText(), QStringLiteral("Cl"));
    EXPECT_EQ(window.focusWidget(), button);
    // None of this is the analyst's doing.
    EXPECT_EQ(sheet.TakeDiary(), "enter 0=");

    sheet.Mutable(1) = {};
    sheet.Mutable(2).enabled = true;
    sheet.Mutable(2).visible = false;
    sheet.LeadTo(Sheet::NoFocus);
    sheet.FocusOn(Sheet::FirstList);
    binder.WriteBack();
    EXPECT_FALSE(boxes[1]->isReadOnly());
    EXPECT_TRUE(boxes[2]->isHidden());
    EXPECT_FALSE(boxes[0]->property("lead").toBool());
    EXPECT_EQ(window.focusWidget(), list);
    EXPECT_EQ(sheet.TakeDiary(), "");
}

TEST_F(SheetBinderTest, WhatArrivesDuringAMessageWaits) {
    // The message's loop runs: a key and a press arrive before Enter has returned.
    sheet.onEnter = [this] {
        sheet.onEnter = nullptr;
        QTest::keyClicks(boxes[0], QStringLiteral("7"));
        QTest::mouseClick(button, Qt::LeftButton);
        sheet.Note("enter done");
    };
    boxes[0]->setFocus();
    QTest::keyClick(boxes[0], Qt::Key_Return);
    EXPECT_EQ(sheet.TakeDiary(), "enter 0=, enter done, button 4");
    EXPECT_EQ(sheet.Text(0), "7");
    EXPECT_EQ(boxes[0]->Text(), "7");
}

TEST_F(SheetBinderTest, AListIsChosenNotPassedThrough) {
    list->setFocus();
    sheet.TakeDiary();
    QTest::keyClick(list, Qt::Key_C);
    EXPECT_TRUE(list->view()->isVisible());
    EXPECT_EQ(sheet.TakeDiary(), "");
    QTest::keyClick(list->view(), Qt::Key_Return);
    EXPECT_EQ(sheet.TakeDiary(), "list 0 row 1");

    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_TRUE(list->view()->isVisible());
    QTest::keyClick(list->view(), Qt::Key_Down);
    QTest::keyClick(list->view(), Qt::Key_Down);
    EXPECT_EQ(sheet.TakeDiary(), "");
    QTest::keyClick(list->view(), Qt::Key_Return);
    EXPECT_EQ(sheet.TakeDiary(), "list 0 row 3");

    // The row that stands already is a choice too; a wheel over the list is none.
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list->view(), Qt::Key_Return);
    EXPECT_EQ(sheet.TakeDiary(), "list 0 row 3");
    QWheelEvent wheel({5, 5}, list->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(list, &wheel);
    EXPECT_EQ(sheet.TakeDiary(), "");
    EXPECT_EQ(list->currentIndex(), 3);
}

}  // namespace
}  // namespace kelvo::test
