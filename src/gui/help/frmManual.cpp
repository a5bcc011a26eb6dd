#include "help/frmManual.h"

#include <QtWidgets>

#include "core/Navigation.h"
#include "help/ManualView.h"
#include "kit/ScreenManager.h"

namespace kelvo {

frmManual::frmManual(AppContext& context) : Screen(context, ScreenCode::frmManual, "frmManual", Kind::Working) {
    setWindowTitle(tr("Kelvo Manual"));
    pages_ = Named(new ManualView, "txtmanual");
    pages_->setAccessibleName(windowTitle());
    const auto button = [&](const char* name, const QString& text, auto slot) {
        auto* made = Named(new QPushButton(text), name);
        made->setAutoDefault(false);
        connect(made, &QPushButton::clicked, pages_, slot);
        return made;
    };
    auto* contents = button("cmdcontents", tr("Contents"), [this] { pages_->Open(QStringLiteral("manual.md")); });
    auto* before = button("cmdbefore", tr("Page Before"), &QTextBrowser::backward);
    auto* after = button("cmdafter", tr("Page After"), &QTextBrowser::forward);
    before->setEnabled(false);
    after->setEnabled(false);
    connect(pages_, &QTextBrowser::backwardAvailable, before, &QWidget::setEnabled);
    connect(pages_, &QTextBrowser::forwardAvailable, after, &QWidget::setEnabled);
    txtfind_ = Named(new QLineEdit, "txtfind");
    auto* find = new QLabel(tr("Find (Ctrl+F)"));
    find->setBuddy(txtfind_);
    txtfind_->setAccessibleName(tr("Find on this page"));
    txtfind_->setMinimumWidth(260);
    connect(txtfind_, &QLineEdit::returnPressed, this, &frmManual::FindNext);
    auto* back = Named(new QPushButton(QStringLiteral("Back")), "cmdback");
    connect(back, &QPushButton::clicked, this, &frmManual::OnEscape);

    auto* head = new QHBoxLayout;
    for (QPushButton* made : {contents, before, after})
        head->addWidget(made);
    head->addStretch();
    head->addWidget(find);
    head->addWidget(txtfind_);
    Body()->setSpacing(8);
    Body()->addLayout(head);
    Body()->addWidget(pages_, 1);
    Body()->addLayout(ButtonRow({back}));
    for (const auto& [keys, by] : {std::pair("Ctrl++", 1), {"Ctrl+=", 1}, {"Ctrl+-", -1}})
        connect(new QShortcut(QKeySequence(QString::fromLatin1(keys)), this), &QShortcut::activated, pages_,
                [this, by = by] { pages_->zoomIn(by); });
}

void frmManual::OnActivate() {
    const std::string page =
        state_.Get<Navigation>().ManualPage.empty() ? "manual.md" : state_.Get<Navigation>().ManualPage;
    state_.Get<Navigation>().ManualPage.clear();
    pages_->Open(ToQt(page));
    pages_->setFocus();
}

void frmManual::FindNext() {
    if (pages_->find(txtfind_->text())) return SetStatus({});
    pages_->moveCursor(QTextCursor::Start);
    SetStatus(pages_->find(txtfind_->text()) ? std::string() : FromQt(tr("Not on this page.")));
}

void frmManual::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1 || event->matches(QKeySequence::Find)) {
        txtfind_->setFocus();
        txtfind_->selectAll();
        return;
    }
    Screen::keyPressEvent(event);
}

void frmManual::OnEscape() {
    context_.screens.Close(Code());
}

}  // namespace kelvo
