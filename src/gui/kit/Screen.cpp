#include "kit/Screen.h"

#include <QtWidgets>

#include "core/Geometry.h"
#include "core/Navigation.h"
#include "core/StatusMessages.h"
#include "help/HelpTopics.h"
#include "kit/BodyArea.h"
#include "kit/EntryBox.h"
#include "kit/ScreenManager.h"

namespace kelvo {

Screen::Screen(AppContext& context, ScreenCode code, const char* formName, Kind kind)
    : context_(context), state_(context.state), code_(code), kind_(kind) {
    setObjectName(QString::fromLatin1(formName));
    setWindowFlag(Qt::Window);
    if (kind != Kind::Working) setWindowFlag(Qt::Dialog);
    setWindowTitle(QStringLiteral("Kelvo"));
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);
    area_ = new BodyArea;
    body_ = new QVBoxLayout(area_->widget());
    body_->setContentsMargins(14, 12, 14, 12);
    outer->addWidget(area_, 1);
    status_ = Named(new QLabel, "statusRemark");
    status_->setAccessibleName(tr("Remarks"));
    status_->setWordWrap(true);
    status_->setContentsMargins(14, 4, 14, 4);
    status_->setProperty("footer", true);
    status_->setTextInteractionFlags(Qt::NoTextInteraction);
    // A panel keeps room for two lines, so that a remark does not move its boxes.
    const int lines = kind == Kind::Panel ? 2 : 1;
    status_->setMinimumHeight(lines * status_->fontMetrics().lineSpacing() + 10);
    status_->setVisible(kind != Kind::Dialog);
    outer->addWidget(status_);
}

QHBoxLayout* Screen::ButtonRow(std::initializer_list<QPushButton*> buttons) {
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addStretch();
    for (QPushButton* button : buttons) {
        button->setAutoDefault(true);
        row->addWidget(button);
    }
    return row;
}

QHBoxLayout* Screen::Centred(QLayout* layout) {
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addLayout(layout, 12);
    row->addStretch(1);
    return row;
}

void Screen::TabThrough(std::initializer_list<QWidget*> widgets) {
    QWidget* before = nullptr;
    for (QWidget* widget : widgets) {
        if (before != nullptr) setTabOrder(before, widget);
        before = widget;
    }
}

QMenuBar* Screen::Menus() {
    if (menus_ == nullptr) {
        menus_ = new QMenuBar(this);
        menus_->setNativeMenuBar(false);
        layout()->setMenuBar(menus_);
    }
    return menus_;
}

QMenu* Screen::AddMenu(const char* name, const QString& title, int index) {
    auto* menu = Menus()->addMenu(title);
    Named(menu->menuAction(), name, index);
    return menu;
}

QAction* Screen::AddItem(QMenu* menu, const char* name, int index, const QString& text) {
    return Named(menu->addAction(text), name, index);
}

QMenu* Screen::AddHelpMenu(HelpItems items) {
    auto* menu = AddMenu("mnuH", QStringLiteral("&Help"));
    int index = 0;
    const auto add = [&](const QString& text, auto slot) {
        auto* item = AddItem(menu, "mnuHelp", index++, text);
        connect(item, &QAction::triggered, this, slot);
        return item;
    };
    if (items != HelpItems::AboutOnly) {
        const bool notes = items == HelpItems::NotesAndAbout;
        auto* sheet = add(notes ? QStringLiteral("&Notes") : QStringLiteral("&Setup"), &Screen::ShowHelp);
        sheet->setShortcut(Qt::Key_F1);
        sheet->setEnabled(context_.screens.Knows(ScreenCode::frminfo));
    }
    add(QStringLiteral("&About"), &Screen::ShowAbout);
    menu->addSeparator();
    auto* manual = AddItem(menu, "mnuManual", -1, tr("&Manual"));
    manual->setEnabled(context_.screens.Knows(ScreenCode::frmManual));
    connect(manual, &QAction::triggered, this, [this] { ShowManual(); });
    return menu;
}

void Screen::ShowHelp() {
    const std::int16_t topic = state_.Get<Navigation>().HelpTopic;
    if (!RequestHelp(state_, code_) || !context_.screens.Knows(ScreenCode::frminfo)) return ShowManual();
    if (context_.screens.IsLoaded(ScreenCode::frminfo)) return;
    const QPointer<Screen> self = this;
    const ScreenCode before = std::exchange(state_.Get<Navigation>().HelpHost, code_);
    context_.screens.ShowModal(ScreenCode::frminfo);
    state_.Get<Navigation>().HelpHost = before;
    // A dialog's sheet does not move the screen behind it.
    if (kind_ != Kind::Working) state_.Get<Navigation>().HelpTopic = topic;
    if (std::exchange(state_.Get<Navigation>().LeaveForMenu, false) && self && isVisible()) LeaveForMenu();
}

void Screen::ShowManual(const std::string& page) {
    constexpr auto Manual = ScreenCode::frmManual;
    if (!context_.screens.Knows(Manual)) return;
    state_.Get<Navigation>().ManualPage = page;
    // A window that waits for an answer lets no other one be worked in, so the manual then comes in front of it.
    const QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr || modal == context_.screens.Find(Manual)) return context_.screens.Show(Manual);
    context_.screens.Hide(Manual);
    context_.screens.ShowModal(Manual);
}

void Screen::ShowAbout() {
    state_.Get<Navigation>().NorvakCaption = "Ok";
    state_.Get<Navigation>().AboutIsStart = false;
    context_.screens.ShowModal(ScreenCode::frmNorvak);
}

void Screen::LeaveForMenu() {
    for (const char* way : {"Back", "Cancel"}) {
        const auto leads = [way](const auto* control) {
            return control->isEnabled() && control->text().remove(QLatin1Char('&')).trimmed() == QLatin1String(way);
        };
        if (menus_ != nullptr)
            for (QAction* action : menus_->actions())
                if (leads(action)) return action->trigger();
        for (QAbstractButton* button : findChildren<QAbstractButton*>())
            if (leads(button)) return button->click();
    }
    OnFrameClose();
}

void Screen::FitFormToScreen() {
    const QScreen* display = screen() != nullptr ? screen() : QGuiApplication::primaryScreen();
    const QRect room = display->availableGeometry();
    const QSize wanted = (QSizeF(room.size()) * double{state_.Get<Geometry>().FormScale}).toSize();
    layout()->activate();
    resize(wanted.expandedTo(area_->WindowNeeded()).boundedTo(room.size()));
    move(room.center() - QPoint(width() / 2, height() / 2));
}

void Screen::WatchBoxes() {
    for (EntryBox* box : findChildren<EntryBox*>()) {
        connect(box, &EntryBox::NotInCodePage, this, [this](const QString& character) {
            SetStatus(character.isEmpty()
                          ? FromQt(tr("A line break or other control character cannot be typed into a box."))
                          : FromQt(tr("The character \"%1\" cannot be stored in Kelvo's files and was not "
                                      "taken.")
                                       .arg(character)));
        });
    }
    for (QWidget* widget : findChildren<QWidget*>())
        if (qobject_cast<QCheckBox*>(widget) != nullptr || qobject_cast<QComboBox*>(widget) != nullptr)
            widget->installEventFilter(this);
}

bool Screen::eventFilter(QObject* watched, QEvent* event) {
    // Some desktops press a tick or open a list by Enter; here Enter moves on everywhere.
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            Screen::keyPressEvent(static_cast<QKeyEvent*>(event));
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void Screen::Present() {
    if (!placed_) {
        placed_ = true;
        WatchBoxes();
        if (kind_ == Kind::Working) {
            FitFormToScreen();
        } else {
            const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
            layout()->activate();
            QSize wanted = sizeHint();
            if (hasHeightForWidth()) wanted.setHeight(layout()->totalHeightForWidth(wanted.width()));
            resize(wanted.expandedTo(area_->WindowNeeded()).boundedTo(room.size()));
            move(room.center() - QPoint(width() / 2, height() / 2));
        }
    }
    if (!state_.Get<StatusMessages>().StatusMessage.empty()) {
        TakeStatusMessage();
    } else if (!takenStatus_.empty() && statusText_ == takenStatus_) {
        // It has been read: a failure that has passed is not told for ever.
        SetStatus({});
    }
    show();
    // A platform without a window manager has no order of windows, and says so each time it is asked for one.
    if (QGuiApplication::platformName() != QStringLiteral("offscreen")) raise();
    activateWindow();
}

void Screen::SetStatus(const std::string& text) {
    statusText_ = text;
    ShowStatus();
}

void Screen::SetLastingStatus(const std::string& text) {
    if (text == lastingStatus_) return;
    lastingStatus_ = text;
    ShowStatus();
}

void Screen::TakeStatusMessage() {
    takenStatus_ = std::exchange(state_.Get<StatusMessages>().StatusMessage, {});
    SetStatus(takenStatus_);
}

void Screen::SetReadingNote(const std::string& text) {
    if (text == readingNote_) return;
    readingNote_ = text;
    ShowStatus();
}

void Screen::ShowStatus() {
    const std::string said = lastingStatus_ + (lastingStatus_.empty() || statusText_.empty() ? "" : " ") + statusText_;
    const std::string text = readingNote_ + (readingNote_.empty() || said.empty() ? "" : "  |  ") + said;
    status_->setText(ToQt(text));
    status_->setVisible(kind_ != Kind::Dialog || !text.empty());
    status_->setProperty("filled", !text.empty());
    status_->style()->unpolish(status_);
    status_->style()->polish(status_);
}

std::string Screen::StatusText() const {
    return FromQt(status_->text());
}

void Screen::GrowToContent() {
    layout()->activate();
    const QSize room = screen()->availableSize();
    resize(size().expandedTo(QSize(width(), layout()->totalHeightForWidth(width())).boundedTo(room)));
}

void Screen::closeEvent(QCloseEvent* event) {
    // The frame never takes a screen away by itself: the screen's own way out decides, with its questions.
    event->ignore();
    OnFrameClose();
}

void Screen::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    if (!event->spontaneous()) emit WentAway();
}

void Screen::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Escape: OnEscape(); return;
        case Qt::Key_F1: ShowHelp(); return;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            // Buttons and boxes take Enter themselves; on lists and ticks it moves on, past what is only to be read.
            if (focusWidget() == nullptr || focusWidget() == this) return;
            for (qsizetype boxes = findChildren<EntryBox*>().size(); boxes >= 0; --boxes) {
                focusNextChild();
                const auto* box = qobject_cast<EntryBox*>(focusWidget());
                if (box == nullptr || !box->isReadOnly()) return;
            }
            return;
        default: QWidget::keyPressEvent(event);
    }
}

}  // namespace kelvo
