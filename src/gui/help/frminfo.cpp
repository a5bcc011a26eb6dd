#include "help/frminfo.h"

#include <QtWidgets>

#include "core/Navigation.h"
#include "core/Paths.h"
#include "devices/ScreenPrint.h"
#include "help/NoteEdit.h"
#include "help/PageButton.h"
#include "help/ReadingView.h"
#include "kit/ScreenManager.h"
#include "kit/Theme.h"

namespace kelvo {
namespace {

const char* const PadHeading = "                          User Note Pad for Special Application Notes";
constexpr double PadHeadingPoints = 9.75;
constexpr double ZoomStep = 1.15;

}  // namespace

frminfo::frminfo(AppContext& context)
    : Screen(context, ScreenCode::frminfo, "frminfo", Kind::Working), sheet_(context.state, context.prompts) {
    BuildMenus();
    unsaved_ = context.unsaved.Add(
        [this] { return left_ ? std::vector<UnsavedPiece>() : sheet_.Pad().Unsaved(txtinfo_->Text()); });
    auto* back = Named(new QPushButton(QStringLiteral("Back")), "cmdback");
    cmdmenu_ = Named(new QPushButton(QStringLiteral("Main Menu")), "cmdmenu");
    connect(back, &QPushButton::clicked, this, &frminfo::Back);
    connect(cmdmenu_, &QPushButton::clicked, this, &frminfo::MainMenu);
    parts_ = new QSplitter(Qt::Vertical);
    parts_->setChildrenCollapsible(false);
    parts_->addWidget(Advice());
    parts_->addWidget(Pad());
    parts_->setStretchFactor(0, 5);
    parts_->setStretchFactor(1, 3);
    Body()->setSpacing(8);
    Body()->addLayout(Head());
    Body()->addWidget(parts_, 1);
    Body()->addLayout(ButtonRow({back, cmdmenu_}));
}

void frminfo::BuildMenus() {
    auto* file = AddMenu("mnuF", QStringLiteral("&File"));
    auto* print = AddItem(file, "mnuFile", 0, QStringLiteral("&Print"));
    print->setShortcut(QKeySequence::Print);
    connect(print, &QAction::triggered, this, &frminfo::Print);
    connect(AddItem(file, "mnuFile", 1, QStringLiteral("&Close")), &QAction::triggered, this, &frminfo::Back);
    auto* view = AddMenu("mnuV", tr("&View"));
    const auto item = [&](int index, const QString& text, const QList<QKeySequence>& keys, auto zoom) {
        auto* action = AddItem(view, "mnuView", index, text);
        action->setShortcuts(keys);
        connect(action, &QAction::triggered, this, zoom);
    };
    item(0, tr("&Larger"), {QKeySequence(QStringLiteral("Ctrl++")), QKeySequence(QStringLiteral("Ctrl+="))},
         [this] { Zoom(zoom_ * ZoomStep); });
    item(1, tr("&Smaller"), {QKeySequence(QStringLiteral("Ctrl+-"))}, [this] { Zoom(zoom_ / ZoomStep); });
    item(2, tr("&Normal"), {QKeySequence(QStringLiteral("Ctrl+0"))}, [this] { Zoom(1); });
    AddHelpMenu(HelpItems::AboutOnly);
}

QLayout* frminfo::Head() {
    heading_ = Named(new QLabel, "lblHeading");
    heading_->setProperty("heading", true);
    heading_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    heading_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    txtfind_ = Named(new QLineEdit, "txtfind");
    auto* find = new QLabel(tr("Search (F1)"));
    find->setBuddy(txtfind_);
    txtfind_->setAccessibleName(tr("Search all sheets and notes"));
    txtfind_->setClearButtonEnabled(true);
    txtfind_->setMinimumWidth(200);
    txtfind_->installEventFilter(this);
    connect(txtfind_, &QLineEdit::textChanged, this, &frminfo::Search);
    connect(txtfind_, &QLineEdit::returnPressed, this, [this] { OpenHit(found_->currentItem()); });
    auto* head = new QHBoxLayout;
    head->addWidget(heading_, 1);
    head->addWidget(find);
    head->addWidget(txtfind_);
    return head;
}

QWidget* frminfo::Advice() {
    reading_ = Named(new ReadingView, "txtadvice");
    reading_->setAccessibleName(tr("Advice"));
    connect(reading_, &ReadingView::ZoomAsked, this,
            [this](int steps) { Zoom(steps > 0 ? zoom_ * ZoomStep : zoom_ / ZoomStep); });
    found_ = Named(new QListWidget, "lstfound");
    found_->setAccessibleName(tr("Places found"));
    found_->setWordWrap(true);
    found_->setSpacing(3);
    connect(found_, &QListWidget::itemClicked, this, &frminfo::OpenHit);
    connect(found_, &QListWidget::itemActivated, this, &frminfo::OpenHit);
    found_->installEventFilter(this);
    upper_ = new QStackedWidget;
    upper_->addWidget(reading_);
    upper_->addWidget(found_);

    picture_ = Named(new IllustrationView, "imgtopic");
    Image1_ = Named(new PageButton(false), "Image1");
    next_ = Named(new QPushButton(tr("Next Sheet")), "cmdnext");
    chapter_ = Named(new QPushButton(tr("Read on in the Manual")), "cmdmanual");
    Image1_->setAccessibleName(next_->text());
    Image1_->setToolTip(next_->text());
    connect(Image1_, &QAbstractButton::clicked, this, &frminfo::ShowSecond);
    connect(next_, &QAbstractButton::clicked, this, &frminfo::ShowSecond);
    connect(chapter_, &QAbstractButton::clicked, this, [this] { ShowManual(sheet_.Chapter()); });
    auto* on = new QHBoxLayout;
    on->addWidget(Image1_);
    on->addWidget(next_, 1);
    auto* side = new QVBoxLayout;
    side->addWidget(picture_, 1);
    side->addLayout(on);
    side->addWidget(chapter_);

    auto* part = new QWidget;
    auto* row = new QHBoxLayout(part);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(14);
    row->addWidget(upper_, 5);
    row->addLayout(side, 3);
    return part;
}

QWidget* frminfo::Pad() {
    pad_ = new QWidget;
    auto* caption = Named(new QLabel(QString::fromLatin1(PadHeading)), "lblpad");
    QFont letters = caption->font();
    letters.setPointSizeF(PadHeadingPoints);
    caption->setFont(letters);
    // Its dark red needs a light ground, also in a dark theme.
    caption->setStyleSheet(QStringLiteral("background: #f6f1e4; color: %1; padding: 3px; font-size: %2pt;")
                               .arg(ColourOf(colour::Red).name())
                               .arg(PadHeadingPoints));
    txtinfo_ = Named(new NoteEdit, "txtinfo");
    txtinfo_->setAccessibleName(caption->text().trimmed());
    caption->setBuddy(txtinfo_);
    connect(txtinfo_, &NoteEdit::LeftOut, this, [this](const QString& what) { SetStatus(FromQt(what)); });
    connect(txtinfo_, &QPlainTextEdit::textChanged, this, [this] { SetStatus(sheet_.Status()); });
    auto* column = new QVBoxLayout(pad_);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(caption);
    column->addWidget(txtinfo_, 1);
    return pad_;
}

void frminfo::OnLoad() {
    sheet_.Open();
    ShowPage();
}

void frminfo::OnActivate() {
    if (sheet_.IsDocument() || txtinfo_->isReadOnly())
        reading_->setFocus();
    else
        txtinfo_->setFocus();
}

void frminfo::ShowPage() {
    setWindowTitle(ToQt(sheet_.Caption()));
    heading_->setText(ToQt(sheet_.Heading()));
    reading_->Show(sheet_.First());
    picture_->Show(Illustration(sheet_.Picture()));
    picture_->setAccessibleName(tr("Illustration: %1").arg(heading_->text()));
    Image1_->setVisible(sheet_.HasSecond());
    next_->setVisible(sheet_.HasSecond());
    // The box that is written to, or that holds the file shown, is the one named for it.
    const bool document = sheet_.IsDocument();
    Named<QWidget>(reading_, document ? "txtinfo" : "txtadvice");
    Named<QWidget>(txtinfo_, document ? "txtnopad" : "txtinfo");
    pad_->setVisible(!document);
    cmdmenu_->setVisible(!document);
    upper_->setMaximumWidth(reading_->WidestUseful());
    txtinfo_->SetText(sheet_.Pad().Text());
    txtinfo_->setReadOnly(!sheet_.Pad().Writable());
    SetStatus(sheet_.Status());
}

void frminfo::Zoom(double zoom) {
    reading_->SetZoom(zoom);
    zoom_ = reading_->Zoom();
    upper_->setMaximumWidth(reading_->WidestUseful());
    QFont letters = reading_->font();
    letters.setPointSizeF(letters.pointSizeF() * zoom_);
    txtinfo_->setFont(letters);
}

void frminfo::ShowSecond() {
    sheet_.LeavePlace();
    context_.screens.ShowModal(ScreenCode::frminfo2);
}

void frminfo::Search(const QString& query) {
    if (!search_) search_ = std::make_unique<HelpSearch>(state_.Get<Paths>().HelpPath);
    hits_ = search_->Find(FromQt(query));
    found_->clear();
    for (const HelpHit& hit : hits_)
        found_->addItem(ToQt(hit.where) + QStringLiteral("\n") + ToQt(hit.excerpt));
    const bool asked = !query.trimmed().isEmpty();
    upper_->setCurrentWidget(asked ? static_cast<QWidget*>(found_) : reading_);
    if (!hits_.empty()) found_->setCurrentRow(0);
    SetStatus(asked ? FromQt(hits_.empty() ? tr("Nothing found.")
                                           : tr("%n place(s) found.", nullptr, static_cast<int>(hits_.size())))
                    : sheet_.Status());
}

void frminfo::OpenHit(const QListWidgetItem* item) {
    const int row = item == nullptr ? -1 : found_->row(item);
    if (row < 0 || !Leave()) return;
    sheet_.Show(hits_.at(static_cast<std::size_t>(row)).page);
    search_.reset();
    ShowPage();
    LeaveSearch();
    OnActivate();
}

void frminfo::LeaveSearch() {
    txtfind_->clear();
    upper_->setCurrentWidget(reading_);
}

bool frminfo::Leave() {
    const std::string text = txtinfo_->Text();
    if (sheet_.Leave(text)) return true;
    SetStatus(FromQt(tr("The note is not saved. It stands here as you wrote it.")));
    txtinfo_->setFocus();
    return false;
}

void frminfo::Back() {
    if (!Leave()) return;
    left_ = true;
    context_.screens.Close(ScreenCode::frminfo2);
    context_.screens.Close(Code());
}

void frminfo::MainMenu() {
    if (!Leave()) return;
    left_ = true;
    const bool alone = state_.Get<Navigation>().HelpHost == ScreenCode::None;
    state_.Get<Navigation>().LeaveForMenu = !alone;
    context_.screens.Close(ScreenCode::frminfo2);
    context_.screens.Close(Code());
    if (alone) context_.screens.Show(ScreenCode::frmenu);
}

void frminfo::OnUnload() {
    // Whatever closes the sheet, the end of the session included, the pad is put away.
    if (!left_) sheet_.Keep(txtinfo_->Text());
    left_ = true;
}

void frminfo::OnEscape() {
    if (!txtfind_->text().isEmpty())
        LeaveSearch();
    else
        Back();
}

void frminfo::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1 || event->matches(QKeySequence::Find)) {
        txtfind_->setFocus();
        txtfind_->selectAll();
        return;
    }
    Screen::keyPressEvent(event);
}

bool frminfo::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return Screen::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (watched == txtfind_ && (key == Qt::Key_Down || key == Qt::Key_Up) && found_->count() > 0) {
        found_->setCurrentRow(
            std::clamp(found_->currentRow() + (key == Qt::Key_Down ? 1 : -1), 0, found_->count() - 1));
        return true;
    }
    if (watched == txtfind_ || watched == found_) return false;
    return Screen::eventFilter(watched, event);
}

void frminfo::Print() {
    QTextDocument page;
    QTextCursor cursor(&page);
    constexpr double Points = 10, PictureWidth = 260;
    std::vector<TextBlock> blocks = {{TextBlock::Kind::Title, sheet_.Heading()}};
    for (const auto& part : {sheet_.First(), sheet_.Second()})
        blocks.insert(blocks.end(), part.begin(), part.end());
    WriteBlocks(cursor, blocks, Points);
    WriteIllustration(cursor, Illustration(sheet_.Picture()), PictureWidth);
    if (!sheet_.IsDocument() && !txtinfo_->Text().empty()) {
        cursor.insertBlock();
        WriteBlocks(cursor, {{TextBlock::Kind::Heading, FromQt(QString::fromLatin1(PadHeading).trimmed())}}, Points);
        QTextCharFormat letters;
        letters.setFontPointSize(Points);
        cursor.insertBlock(QTextBlockFormat(), letters);
        cursor.insertText(ToQt(txtinfo_->Text()));
    }
    PrintText(context_, *this, page);
}

}  // namespace kelvo
