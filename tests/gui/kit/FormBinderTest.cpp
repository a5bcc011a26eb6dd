#include "kit/FormBinder.h"

#include <gtest/gtest.h>

#include <QtTest>
#include <QtWidgets>

#include "kit/EntryBox.h"
#include "support/Patience.h"
#include "support/Scripted.h"

namespace kelvo::test {
namespace {

/// Writes down what is handed in; takes digits.
class DiaryForm : public FormModel {
 public:
    explicit DiaryForm(Prompts& prompts) : FormModel(3, prompts) {}

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

    using FormModel::FocusOn;
    using FormModel::Set;

    std::function<void()> onEnter;
    std::string diary;
    int selected = -1;
};

class FormBinderTest : public testing::Test {
 protected:
    FormBinderTest() {
        auto* layout = new QVBoxLayout(&window);
        for (int i = 0; i < 3; ++i) {
            boxes[i] = EntryBox::Number(&window);
            layout->addWidget(boxes[i]);
            binder.Bind(i, boxes[i]);
        }
        list = new QComboBox(&window);
        list->addItems({QStringLiteral("Ag"), QStringLiteral("Ca"), QStringLiteral("Cl")});
        list->setCurrentIndex(-1);
        layout->addWidget(list);
        binder.BindList(0, list);
        button = new QPushButton(&window);
        layout->addWidget(button);
        binder.BindButton(4, button);
        binder.WriteBack();
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window, PatienceMs));
    }

    ScriptedPrompts prompts;
    DiaryForm form{prompts};
    QWidget window;
    FormBinder binder{form};
    EntryBox* boxes[3] = {};
    QComboBox* list = nullptr;
    QPushButton* button = nullptr;
};

TEST_F(FormBinderTest, HandsInWhatTheAnalystDoes) {
    boxes[0]->setFocus();
    QTest::keyClicks(boxes[0], QStringLiteral("12"));
    QTest::keyClick(boxes[0], Qt::Key_Return);
    QTest::keyClick(boxes[0], Qt::Key_Enter, Qt::KeypadModifier);
    QTest::keyClick(boxes[0], Qt::Key_Backspace);
    QTest::keyClick(boxes[0], Qt::Key_Backspace);
    QTest::keyClick(boxes[0], Qt::Key_Tab);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(form.TakeDiary(), "enter 0=12, enter 0=12, emptied 0, left 0, left 1, button 4");
}

TEST_F(FormBinderTest, PassesLongNumbersWholeAndNothingForeign) {
    const std::string number(1000, '9');
    for (const std::string& text : {number, std::string("2,5")}) {
        QGuiApplication::clipboard()->setText(QString::fromStdString(text));
        boxes[0]->paste();
    }
    EXPECT_EQ(form.Text(0), number);
    EXPECT_EQ(form.TakeDiary(), "refused 0");
    form.Set(1, number);
    binder.WriteBack();
    EXPECT_EQ(boxes[1]->Text(), number);
}

TEST_F(FormBinderTest, WhatArrivesDuringAMessageWaits) {
    // The message's loop runs: a key and a press arrive before Enter has returned.
    form.onEnter = [this] {
        form.onEnter = nullptr;
        form.FocusOn(FormModel::FirstList);
        QTest::keyClicks(boxes[0], QStringLiteral("7"));
        QTest::mouseClick(button, Qt::LeftButton);
        form.Note("enter done");
    };
    boxes[0]->setFocus();
    QTest::keyClick(boxes[0], Qt::Key_Return);
    EXPECT_EQ(form.TakeDiary(), "enter 0=, enter done, button 4");
    EXPECT_EQ(form.Text(0), "7");
    EXPECT_EQ(boxes[0]->Text(), "7");
    EXPECT_EQ(window.focusWidget(), list);
}

TEST_F(FormBinderTest, AListIsChosenNotPassedThrough) {
    list->setFocus();
    form.TakeDiary();
    QTest::keyClick(list, Qt::Key_C);
    EXPECT_EQ(form.TakeDiary(), "");
    QTest::keyClick(list->view(), Qt::Key_Return);
    EXPECT_EQ(form.TakeDiary(), "list 0 row 1");

    // The row that stands already is a choice too; a wheel over the list is none.
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list->view(), Qt::Key_Return);
    EXPECT_EQ(form.TakeDiary(), "list 0 row 1");
    QWheelEvent wheel({5, 5}, list->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(list, &wheel);
    EXPECT_EQ(form.TakeDiary(), "");
    EXPECT_EQ(list->currentIndex(), 1);
}

}  // namespace
}  // namespace kelvo::test
