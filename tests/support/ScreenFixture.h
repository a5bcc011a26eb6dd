#pragma once

#include <gtest/gtest.h>

#include <QtTest>
#include <QtWidgets>
#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>

#include "app/AppState.h"
#include "app/Screens.h"
#include "core/Startup.h"
#include "devices/PageWriterQt.h"
#include "kit/AppContext.h"
#include "kit/EntryBox.h"
#include "kit/Screen.h"
#include "kit/ScreenManager.h"
#include "support/Scripted.h"
#include "support/SourceDir.h"
#include "tables/TableNavigatorQt.h"
#include "tables/TablePresenter.h"

namespace kelvo::test {

/// The real screens on a fresh state and a folder of their own, with scripted prompts and files. A modal screen is
/// driven by the next script given to `OnModal`; one that nobody expects fails the test and is closed.
class ScreenFixture : public testing::Test {
 protected:
    void SetUp() override {
        folder = std::filesystem::temp_directory_path() / ("kelvo-" + Unique());
        std::filesystem::create_directories(folder);
        for (const char* first : {"KELVO.ini", "DEFAULT.CLI"})
            std::filesystem::copy_file(SourceDir() + "packaging/" + first, folder / first);
        LoadState(state, {1280 * 15, 800 * 15}, folder.string());
        table.Attach(&tableNavigator);
        printing.pageSize = QPageSize(QPageSize::A4);
        RegisterScreens(context);
        QObject::connect(&screens, &ScreenManager::ModalShown, &screens, [this](Screen* screen) {
            if (modals_.empty()) {
                ADD_FAILURE() << "not expected: " << FromQt(screen->objectName());
                screen->hide();
                return;
            }
            auto script = modals_.front();
            modals_.pop_front();
            script(screen);
        });
    }

    void TearDown() override {
        EXPECT_TRUE(modals_.empty()) << modals_.size() << " modal screens never came";
        for (QWidget* window : QApplication::topLevelWidgets())
            window->hide();
        ProcessEvents();
        std::filesystem::remove_all(folder);
    }

    static std::string Unique() {
        static int count = 0;
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        return std::string(test->name()) + "-" + std::to_string(QCoreApplication::applicationPid()) + "-" +
               std::to_string(++count);
    }

    /// Script for the next modal screen. It must take the screen away, by OK, Cancel or Escape.
    void OnModal(std::function<void(Screen*)> script) { modals_.push_back(std::move(script)); }

    /// Lets queued events and deletions happen.
    static void ProcessEvents() {
        for (int i = 0; i < 3; ++i) {
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

    Screen* Shown(ScreenCode code) {
        ProcessEvents();
        Screen* screen = screens.Find(code);
        EXPECT_TRUE(screen != nullptr && screen->isVisible()) << "screen " << static_cast<int>(code);
        return screen;
    }

    template <typename T>
    static T* Find(Screen* screen, const QString& name) {
        T* found = screen->findChild<T*>(name);
        if (found == nullptr) throw std::runtime_error("no control " + name.toStdString());
        return found;
    }
    static EntryBox* Box(Screen* screen, const QString& name) { return Find<EntryBox>(screen, name); }
    static std::string Text(Screen* screen, const QString& name) { return Box(screen, name)->Text(); }

    /// Types into the widget that has the focus in that screen, as the keyboard would.
    static void Keys(Screen* screen, const char* text) {
        QWidget* target = screen->focusWidget();
        QTest::keyClicks(target != nullptr ? target : screen, QString::fromUtf8(text));
        QCoreApplication::processEvents();
    }
    static void Key(Screen* screen, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QWidget* target = screen->focusWidget();
        QTest::keyClick(target != nullptr ? target : screen, key, modifiers);
        QCoreApplication::processEvents();
    }
    static void Enter(Screen* screen) { Key(screen, Qt::Key_Return); }
    /// Replaces the content of the box in hand and presses Enter.
    static void Put(Screen* screen, const char* text) {
        if (auto* box = qobject_cast<EntryBox*>(screen->focusWidget())) box->selectAll();
        Keys(screen, text);
        Enter(screen);
    }
    static std::string Focus(Screen* screen) {
        return screen->focusWidget() == nullptr ? "" : FromQt(screen->focusWidget()->objectName());
    }
    static void Click(Screen* screen, const QString& name) {
        Find<QAbstractButton>(screen, name)->click();
        ProcessEvents();
    }
    static void Choose(Screen* screen, const QString& name) {
        auto* action = Find<QAction>(screen, name);
        EXPECT_TRUE(action->isEnabled() && action->isVisible()) << name.toStdString();
        action->trigger();
        ProcessEvents();
    }

    std::string Path(const std::string& name) const { return (folder / name).string(); }
    std::string Content(const std::string& name) const {
        std::ifstream file(folder / name, std::ios::binary);
        std::stringstream text;
        text << file.rdbuf();
        return text.str();
    }

    std::filesystem::path folder;
    AppState state;
    ScriptedPrompts prompts;
    ScriptedFiles files;
    FixedClock clock;
    ScreenManager screens{state};
    DataTable dataTable;
    TablePresenter table{state, dataTable, prompts, files, clock};
    TableNavigatorQt tableNavigator{screens};
    PrintingQt printing{state, prompts, files};
    AppContext context{state, prompts, files, clock, screens, table, &printing};

 private:
    std::deque<std::function<void(Screen*)>> modals_;
};

}  // namespace kelvo::test
