#include "kit/ScreenManager.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QEvent>
#include <QEventLoop>
#include <QPointer>
#include <QTimer>
#include <stdexcept>

#include "core/Navigation.h"
#include "core/StatusMessages.h"
#include "kit/Screen.h"

namespace kelvo {

ScreenManager::ScreenManager(StateOf<Navigation, StatusMessages> state) : state_(state) {
    QCoreApplication::instance()->installEventFilter(this);
    // Between two events: a step that leaves a message and shows another screen has done so by then.
    auto* events = QAbstractEventDispatcher::instance();
    connect(events, &QAbstractEventDispatcher::awake, this, &ScreenManager::ShowStatusMessage);
    connect(events, &QAbstractEventDispatcher::aboutToBlock, this, &ScreenManager::ShowStatusMessage);
}

void ScreenManager::ShowStatusMessage() {
    if (state_.Get<StatusMessages>().StatusMessage.empty() || ended_) return;
    QWidget* front = QApplication::activeModalWidget();
    // A box that stands may lead to another screen; the message waits for where it leads.
    if (front != nullptr && qobject_cast<Screen*>(front) == nullptr) return;
    if (front == nullptr) front = QApplication::activeWindow();
    auto* screen = qobject_cast<Screen*>(front);
    if (screen == nullptr) screen = qobject_cast<Screen*>(shownLast_.data());
    if (screen != nullptr && screen->isVisible()) screen->TakeStatusMessage();
}

bool ScreenManager::eventFilter(QObject* watched, QEvent* event) {
    const bool second = event->type() == QEvent::MouseButtonDblClick;
    if (!second && event->type() != QEvent::MouseButtonPress) return false;
    auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr) return false;
    QWidget* window = widget->window();
    if (second && window->windowType() != Qt::Popup) return window != pressed_;
    pressed_ = window;
    return false;
}

ScreenManager::~ScreenManager() {
    const auto screens = std::move(loaded_);
    loaded_.clear();
    for (const auto& [code, screen] : screens)
        delete screen;
}

void ScreenManager::Register(ScreenCode code, Maker maker) {
    makers_[code] = std::move(maker);
}

bool ScreenManager::Knows(ScreenCode code) const {
    return makers_.contains(code);
}

Screen* ScreenManager::Find(ScreenCode code) const {
    const auto found = loaded_.find(code);
    return found == loaded_.end() ? nullptr : found->second;
}

bool ScreenManager::IsShown(ScreenCode code) const {
    const Screen* screen = Find(code);
    return screen != nullptr && screen->isVisible();
}

Screen& ScreenManager::Load(ScreenCode code) {
    if (Screen* screen = Find(code)) return *screen;
    const auto maker = makers_.find(code);
    if (maker == makers_.end()) throw std::logic_error("no screen is registered under this number");
    Screen* screen = maker->second();
    loaded_[code] = screen;
    screen->OnLoad();
    return *screen;
}

void ScreenManager::Present(ScreenCode code) {
    Load(code).Present();
}

void ScreenManager::Show(ScreenCode code) {
    Screen& screen = Load(code);
    shownLast_ = &screen;
    screen.Present();
    screen.OnActivate();
}

void ScreenManager::ShowModal(ScreenCode code) {
    QPointer<Screen> screen = &Load(code);
    QEventLoop loop;
    connect(screen, &Screen::WentAway, &loop, &QEventLoop::quit);
    connect(screen, &QObject::destroyed, &loop, &QEventLoop::quit);
    connect(this, &ScreenManager::ProgramEnded, &loop, &QEventLoop::quit);
    screen->setWindowModality(Qt::ApplicationModal);
    screen->Present();
    screen->OnActivate();
    if (screen && screen->isVisible() && !ended_) {
        QTimer::singleShot(0, &loop, [this, screen] {
            if (screen) emit ModalShown(screen);
        });
        loop.exec();
    }
    if (screen) screen->setWindowModality(Qt::NonModal);
}

void ScreenManager::Hide(ScreenCode code) {
    if (Screen* screen = Find(code)) screen->hide();
}

void ScreenManager::Close(ScreenCode code) {
    const auto found = loaded_.find(code);
    if (found == loaded_.end()) return;
    Screen* screen = found->second;
    loaded_.erase(found);
    screen->OnUnload();
    screen->hide();
    screen->deleteLater();
}

void ScreenManager::CloseSubScreen(int code) {
    Close(static_cast<ScreenCode>(code));
    state_.Get<Navigation>().ReturnScreen = 0;
}

void ScreenManager::EndProgram(int exitCode) {
    if (ended_) return;
    ended_ = true;
    while (!loaded_.empty())
        Close(loaded_.begin()->first);
    emit ProgramEnded(exitCode);
}

}  // namespace kelvo
