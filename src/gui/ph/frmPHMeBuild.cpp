#include <QtWidgets>

#include "core/StatusMessages.h"
#include "kit/EntryBox.h"
#include "kit/PictureView.h"
#include "kit/ScreenManager.h"
#include "kit/Theme.h"
#include "link/LinkStatusLabel.h"
#include "ph/PutAsideMenu.h"
#include "ph/RecordingExport.h"
#include "ph/RecordingWords.h"
#include "ph/frmPHMe.h"
#include "tables/TablePresenter.h"

// How the recording screen is put together; what it does stands in frmPHMe.cpp.

namespace kelvo {
namespace {

/// The graph takes the room that the boxes leave, however little that is.
class RecordingView : public PictureView {
 public:
    using PictureView::PictureView;
    QSize sizeHint() const override { return minimumSizeHint(); }
    QSize minimumSizeHint() const override { return {280, 120}; }
};

}  // namespace

frmPHMe::frmPHMe(AppContext& context) : Screen(context, ScreenCode::frmPHMe, "frmPHMe", Kind::Working) {
    RecordingHost& host = *this;
    recording_ = std::make_unique<RecordingPresenter>(context.state, context.prompts, context.files, context.clock,
                                                      context.table, host, InputsOf(context));
    unsaved_ = context.unsaved.Add([this] { return recording_->Unsaved(); });
    Timer1_.setSingleShot(true);
    Timer1_.setTimerType(Qt::PreciseTimer);
    connect(&Timer1_, &QTimer::timeout, this, &frmPHMe::Tick);
    // Of the two only this one ticks soon after a sleep, which the timers' clock leaves out.
    Second_.setInterval(1000);
    connect(&Second_, &QTimer::timeout, this, &frmPHMe::Tick);
    Second_.start();
    BuildMenus();

    picPH_ = Named(new RecordingView(recording_->Graph(), nullptr, recording::Width, recording::Height), "picPH");
    picPH_->setAccessibleName(tr("Graph of the recording"));
    picPH_->SetWords([this] { return RecordingWords(recording_->Run()); });
    Label3_ = Named(new QLabel, "Label3");
    Label3_->setWordWrap(true);
    Label3_->setAlignment(Qt::AlignCenter);
    Label3_->setStyleSheet(MessageStyle(4));
    Label4_ = Named(new QLabel, "Label4");
    Label4_->setFixedHeight(4);
    for (QLabel* label : {Label3_, Label4_}) {
        // The graph does not jump when the hint comes and goes.
        QSizePolicy kept = label->sizePolicy();
        kept.setRetainSizeWhenHidden(true);
        label->setSizePolicy(kept);
    }
    Body()->setContentsMargins(10, 8, 10, 8);
    Body()->setSpacing(6);
    Body()->addWidget(picPH_, 1);
    Body()->addWidget(Label3_);
    Body()->addWidget(Label4_);
    Body()->addWidget(BuildLive());
    Body()->addWidget(BuildBoxes());
}

QWidget* frmPHMe::BuildLive() {
    auto* holder = new QWidget;
    auto* row = new QHBoxLayout(holder);
    row->setContentsMargins(0, 0, 0, 0);
    lblLive_ = Named(new QLabel, "lblLive");
    lblLive_->setTextFormat(Qt::PlainText);
    lblLive_->setWordWrap(true);
    row->addWidget(lblLive_, 1);
    row->addWidget(new LinkStatusLabel(context_.link));
    return holder;
}

QWidget* frmPHMe::BuildBoxes() {
    auto* row = new QWidget;
    auto* grid = new QGridLayout(row);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(2);
    lblScale_ = Named(new QLabel, "lblScale");
    lblScale_->setProperty("quiet", true);
    for (int i = 0; i < 5; ++i) {
        const auto at = static_cast<std::size_t>(i);
        labtitle_[at] = Named(new QLabel, "labtitle", i);
        labtitle_[at]->setTextFormat(Qt::PlainText);
        txtTT_[at] = Named(EntryBox::Number(), "txtTT", i);
        labtitle_[at]->setBuddy(txtTT_[at]);
        QFont large = txtTT_[at]->font();
        large.setPointSizeF(i == 1 || i == 2 ? 26 : 17);
        large.setBold(i == 1 || i == 2);
        txtTT_[at]->setFont(large);
        txtTT_[at]->setMinimumWidth(QFontMetrics(large).horizontalAdvance(QStringLiteral("00:00:00")) + 20);
        if (i > 0) txtTT_[at]->SetComputed(true);
        // The unit stands behind the values of the electrodes.
        const int column = i < 3 ? i : i + 1;
        grid->addWidget(labtitle_[at], 0, column);
        grid->addWidget(txtTT_[at], 1, column);
        grid->setColumnStretch(column, i == 1 || i == 2 ? 3 : 2);
    }
    grid->addWidget(lblScale_, 1, 3);
    connect(txtTT_[0], &QLineEdit::textEdited, this,
            [this](const QString& text) { recording_->NumberTyped(FromQt(text)); });
    connect(txtTT_[0], &EntryBox::Entered, this, [this] {
        recording_->NumberEntered(txtTT_[0]->Text());
        ShowFace();
        txtTT_[0]->selectAll();
    });
    return row;
}

void frmPHMe::Does(QAction* action, void (RecordingPresenter::*step)()) {
    connect(action, &QAction::triggered, this, [this, step] {
        SetStatus({});
        (recording_.get()->*step)();
        ShowFace();
    });
}

void frmPHMe::BuildMenus() {
    BuildFileMenu();
    mnuStart_ = Named(Menus()->addAction(QStringLiteral("&Re-start")), "mnuStart");
    mnuStop_ = Named(Menus()->addAction(QStringLiteral("&Stop")), "mnuStop");
    Does(mnuStart_, &RecordingPresenter::Restart);
    Does(mnuStop_, &RecordingPresenter::Stop);
    BuildOptionMenu();
    BuildExportMenu();
    Does(Named(Menus()->addAction(QStringLiteral("&Back")), "mnuMainmenu"), &RecordingPresenter::Back);
    AddHelpMenu();
}

void frmPHMe::BuildFileMenu() {
    auto* file = AddMenu("mnuF", QStringLiteral("&File"));
    mnuF_ = file->menuAction();
    mnuFile_ = {
        AddItem(file, "mnuFile", 0, QStringLiteral("&New")), AddItem(file, "mnuFile", 1, QStringLiteral("&Open")),
        AddItem(file, "mnuFile", 2, QStringLiteral("&Save")), AddItem(file, "mnuFile", 3, QStringLiteral("&Close"))};
    auto* print = file->addMenu(QStringLiteral("&Print"));
    mnuFile_[4] = Named(print->menuAction(), "mnuFile", 4);
    mnuFile_[5] = AddItem(file, "mnuFile", 5, QStringLiteral("E&xit"));
    Does(mnuFile_[0], &RecordingPresenter::New);
    Does(mnuFile_[1], &RecordingPresenter::Open);
    Does(mnuFile_[3], &RecordingPresenter::Back);
    Does(mnuFile_[5], &RecordingPresenter::Exit);
    AddPutAsideMenu(file, context_, this);
    connect(AddItem(print, "mnuPrint", 0, QStringLiteral("&Graph")), &QAction::triggered, this, [this] { Print(0); });
    connect(AddItem(print, "mnuPrint", 1, QStringLiteral("&Data Table")), &QAction::triggered, this,
            [this] { Print(1); });
}

void frmPHMe::BuildOptionMenu() {
    auto* option = AddMenu("mnuO", QStringLiteral("&Option"));
    auto* scales = option->addMenu(QStringLiteral("&Change Scale"));
    Named(scales->menuAction(), "mnuScale", 0);
    for (int i = 0; i < 5; ++i) {
        auto* action = AddItem(scales, "mnupH", i, {});
        action->setCheckable(true);
        connect(action, &QAction::triggered, this, [this, i] {
            recording_->ChangeScale(i);
            ShowFace();
        });
        mnupH_[static_cast<std::size_t>(i)] = action;
    }
    connect(AddItem(option, "mnuScale", 1, QStringLiteral("&Data Number")), &QAction::triggered, this, [this] {
        txtTT_[0]->setFocus(Qt::ShortcutFocusReason);
        txtTT_[0]->selectAll();
    });
    Does(AddItem(option, "mnuOption", 0, QStringLiteral("&Average Setting")), &RecordingPresenter::Average);
    Does(AddItem(option, "mnuOption", 1, QStringLiteral("&View Data Table")), &RecordingPresenter::ViewTable);
    mnuWhole_ = AddItem(option, "mnuWhole", -1, QStringLiteral("Show &Whole File"));
    Does(mnuWhole_, &RecordingPresenter::ShowWholeFile);
}

void frmPHMe::BuildExportMenu() {
    auto* copies = AddMenu("mnuExport", QStringLiteral("&Export"));
    const auto item = [&](const char* name, int index, const QString& text, auto step) {
        connect(AddItem(copies, name, index, text), &QAction::triggered, this, [this, step] {
            step();
            if (!state_.Get<StatusMessages>().StatusMessage.empty()) TakeStatusMessage();
        });
    };
    item("mnuExportTo", 0, QStringLiteral("Graph as &PNG"), [this] { SaveGraphAsPng(context_, *recording_); });
    item("mnuExportTo", 1, QStringLiteral("Graph as &SVG"), [this] { SaveGraphAsSvg(context_, *recording_); });
    item("mnuCopy", -1, QStringLiteral("&Copy Graph"), [this] {
        CopyGraph(*recording_);
        state_.Get<StatusMessages>().StatusMessage = "The graph has been copied.";
    });
}

}  // namespace kelvo
