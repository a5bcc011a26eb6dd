#include <QtWidgets>

#include "calibration/CaliGraph.h"
#include "calibration/fmISEcli.h"
#include "calibration/fmISEcliMessage.h"
#include "calibration/fmISEcliSample.h"
#include "kit/EntryBox.h"
#include "kit/PictureView.h"
#include "kit/ScreenManager.h"

// How the calibration screen is put together; what it does stands in fmISEcli.cpp.

namespace kelvo {

fmISEcli::fmISEcli(AppContext& context)
    : Screen(context, ScreenCode::fmISEcli, "fmISEcli", Kind::Working), session_(context.state, context.prompts) {
    BuildMenus();
    graph_ = Named(new PictureView(state_.Graph), "picGraph");
    graph_->setAccessibleName(tr("Calibration graph"));
    lblmsg_ = new FloatingMessage(graph_);
    auto* row = new QHBoxLayout;
    row->setSpacing(12);
    row->addWidget(graph_, 1);
    panel_ = SidePanel();
    row->addWidget(panel_);
    Body()->setContentsMargins(10, 8, 10, 8);
    Body()->addLayout(row, 1);
    txtlog_ = Named(new QPlainTextEdit(this), "txtlog");
    txtlog_->setReadOnly(true);
    txtlog_->hide();
}

QWidget* fmISEcli::SidePanel() {
    auto* panel = new QWidget;
    auto* box = new QVBoxLayout(panel);
    box->setContentsMargins(0, 0, 0, 0);
    lstCli_ = Named(new QListWidget, "lstCli");
    lstCli_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    lstCli_->setAccessibleName(tr("Calibration data"));
    lstCli_->setSelectionMode(QAbstractItemView::NoSelection);
    lstCli_->setFocusPolicy(Qt::NoFocus);
    lstCli_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    const int row = lstCli_->fontMetrics().horizontalAdvance(QString(31, QLatin1Char('0')));
    panel->setFixedWidth(row + 24);
    box->addWidget(lstCli_, 1);

    auto* slopes = new QGridLayout;
    slopes->setColumnStretch(1, 1);
    const std::array<const char*, 4> captions = {" Slope", "Correlation  r =", "Sigma       S =", "Sigma     Eo ="};
    for (int i = 0; i < 4; ++i) {
        const auto at = static_cast<std::size_t>(i);
        Labslo1_[at] = Named(new QLabel(QString::fromUtf8(captions[at])), "Labslo1", i);
        txtslope_[at] = Named(EntryBox::Number(), "txtslope", i);
        txtslope_[at]->SetComputed(true);
        txtslope_[at]->setAccessibleName(Labslo1_[at]->text());
        slopes->addWidget(Labslo1_[at], i, 0);
        slopes->addWidget(txtslope_[at], i, 1);
    }
    Labslo2_ = Named(new QLabel(QStringLiteral(" mV/dec")), "Labslo2");
    slopes->addWidget(Labslo2_, 0, 2);
    box->addLayout(slopes);

    samples_ = new SampleBoxes;
    box->addWidget(samples_);
    connect(samples_, &SampleBoxes::PotentialEntered, this, &fmISEcli::SampleEntered);
    connect(samples_->Box(0), &EntryBox::Refused, this, [this] {
        Tell("Only digits, \"-\", \".\" and \"E\" make up a potential.");
        samples_->Box(0)->setFocus();
    });
    samples_->Box(0)->SetFilter(
        [](char32_t key) { return (key >= U'0' && key <= U'9') || key == U'-' || key == U'.' || key == U'E'; });
    return panel;
}

void fmISEcli::BuildMenus() {
    BuildFileMenu();
    BuildOptionMenu();
    BuildOtherMenus();
}

void fmISEcli::BuildFileMenu() {
    auto* file = AddMenu("mnuF", QStringLiteral("&File"));
    const auto sub = [&](int index, const QString& text) {
        auto* menu = file->addMenu(text);
        mnuFile_[static_cast<std::size_t>(index)] = Named(menu->menuAction(), "mnuFile", index);
        return menu;
    };
    const auto item = [&](int index, const QString& text, void (fmISEcli::*slot)()) {
        auto* action = AddItem(file, "mnuFile", index, text);
        mnuFile_[static_cast<std::size_t>(index)] = action;
        connect(action, &QAction::triggered, this, slot);
    };
    item(0, QStringLiteral("&New"), &fmISEcli::New);
    auto* open = sub(1, QStringLiteral("&Open"));
    auto* save = sub(2, QStringLiteral("&Save"));
    item(3, QStringLiteral("&Close"), &fmISEcli::Close);
    auto* print = sub(4, QStringLiteral("&Print"));
    item(5, QStringLiteral("E&xit"), &fmISEcli::Exit);

    mnuOpen_ = {AddItem(open, "mnuOpen", 0, QStringLiteral("&Calibration")),
                AddItem(open, "mnuOpen", 1, QStringLiteral("&Data Table"))};
    mnuSave_ = {AddItem(save, "mnuSave", 0, QStringLiteral("&Calibration")),
                AddItem(save, "mnuSave", 1, QStringLiteral("&Data Table"))};
    mnuPrint_ = {AddItem(print, "mnuPrint", 0, QStringLiteral("&Calibration")),
                 AddItem(print, "mnuPrint", 1, QStringLiteral("Sample &Graphics")),
                 AddItem(print, "mnuPrint", 2, QStringLiteral("Sample &Data Table"))};
    mnuOpen_[0]->setShortcut(QKeySequence::Open);
    mnuSave_[0]->setShortcut(QKeySequence::Save);
    connect(mnuOpen_[0], &QAction::triggered, this, &fmISEcli::OpenCalibration);
    connect(mnuSave_[0], &QAction::triggered, this, &fmISEcli::SaveCalibration);
    connect(mnuSave_[1], &QAction::triggered, this, &fmISEcli::SaveTable);
    connect(mnuOpen_[1], &QAction::triggered, this, &fmISEcli::OpenTable);
    mnuOpen_[1]->setEnabled(context_.screens.Knows(ScreenCode::frmQSave));
    for (int i = 0; i < 3; ++i) {
        QAction* action = mnuPrint_[static_cast<std::size_t>(i)];
        connect(action, &QAction::triggered, this, [this, i] { Print(i); });
        action->setEnabled(context_.printing != nullptr);
    }
}

void fmISEcli::BuildOptionMenu() {
    auto* option = AddMenu("mnuOption", QStringLiteral("&Option"));
    mnuOption_ = option->menuAction();
    const auto curve = [&](const char* name, const QString& text, void (fmISEcli::*slot)()) {
        auto* action = AddItem(option, name, -1, text);
        action->setCheckable(true);
        connect(action, &QAction::triggered, this, slot);
        return action;
    };
    mnuLinear_ = curve("mnuLinear", QStringLiteral("&Linear Regression"), &fmISEcli::Linear);
    mnuNonLinear_ = curve("mnuNonLinear", QStringLiteral("&Partly Linear Calibration"), &fmISEcli::PartlyLinear);
    mnuRgrsCli_ = curve("mnuRgrsCli", QStringLiteral("&Best-fit Curve"), &fmISEcli::BestCurve);
    auto* scales = option->addMenu(QStringLiteral("&Change Scale"));
    mnuS_ = Named(scales->menuAction(), "mnuS");
    auto* mv = scales->addMenu(QStringLiteral("&mV"));
    auto* logC = scales->addMenu(QStringLiteral("&LogC"));
    mnuScale_ = {Named(mv->menuAction(), "mnuScale", 0), Named(logC->menuAction(), "mnuScale", 1)};
    for (int i = 0; i < 6; ++i) {
        auto* action = AddItem(mv, "mnumV", i, QString::fromUtf8(MvCaptions[static_cast<std::size_t>(i)]));
        action->setCheckable(true);
        connect(action, &QAction::triggered, this, [this, i] { MvScale(i); });
        mnumV_[static_cast<std::size_t>(i)] = action;
    }
    for (int i = 0; i < 4; ++i) {
        auto* action = AddItem(logC, "mnuLogC", i, QString::fromUtf8(LogCCaptions[static_cast<std::size_t>(i)]));
        action->setCheckable(true);
        connect(action, &QAction::triggered, this, [this, i] { LogCScale(i); });
        mnuLogC_[static_cast<std::size_t>(i)] = action;
    }
    mnuAvg_ = AddItem(option, "mnuAvg", -1, QStringLiteral("&Average Setting"));
    mnuASD_ = AddItem(option, "mnuASD", -1, QStringLiteral("&Edit ASD"));
    mnuView_ = AddItem(option, "mnuView", -1, QStringLiteral("&View Data Table"));
    connect(mnuAvg_, &QAction::triggered, this, &fmISEcli::Average);
    connect(mnuASD_, &QAction::triggered, this, [this] {
        if (state_.ASD != 0) context_.screens.ShowModal(ScreenCode::frmAutoD);
    });
    connect(mnuView_, &QAction::triggered, this, [this] { context_.screens.Show(ScreenCode::frmQSave); });
    mnuASD_->setEnabled(context_.screens.Knows(ScreenCode::frmAutoD));
    mnuView_->setEnabled(context_.screens.Knows(ScreenCode::frmQSave));
}

void fmISEcli::BuildOtherMenus() {
    const auto top = [&](const char* name, const QString& text, void (fmISEcli::*slot)()) {
        auto* action = Named(Menus()->addAction(text), name);
        connect(action, &QAction::triggered, this, slot);
        return action;
    };
    mnuRefresh_ = top("mnuRefresh", QStringLiteral("&Refresh"), &fmISEcli::Refresh);
    auto* poten = AddMenu("mnupoten", QStringLiteral("&Potentiometry"));
    mnupoten_ = poten->menuAction();
    connect(poten, &QMenu::aboutToShow, this, &fmISEcli::PotentiometryOpened);
    mnuPotentiometry_ = {AddItem(poten, "mnuPotentiometry", 0, QStringLiteral("&KeyBoard Input")),
                         AddItem(poten, "mnuPotentiometry", 1, QStringLiteral("&OnLine Reading"))};
    for (int i = 0; i < 2; ++i)
        connect(mnuPotentiometry_[static_cast<std::size_t>(i)], &QAction::triggered, this,
                [this, i] { StartPotentiometry(i); });
    mnuPotentiometry_[1]->setEnabled(context_.screens.Knows(ScreenCode::frmPtset));
    mnuRecording_ = Named(Menus()->addAction(QStringLiteral("&Continuous Recording")), "mnuRecording");
    connect(mnuRecording_, &QAction::triggered, this, [this] { context_.screens.Show(ScreenCode::frmPHMe); });
    mnuQsave_ = top("mnuQsave", QStringLiteral("&Quick Save"), &fmISEcli::QuickSave);
    mnumain_ = top("mnumain", QStringLiteral("&Back"), &fmISEcli::Back);
    AddHelpMenu();
    mnuLog_ = Named(Menus()->addAction(QStringLiteral("Show LogFile")), "mnuLog");
    mnuLog_->setVisible(false);
    connect(mnuLog_, &QAction::triggered, this, [this] { txtlog_->setVisible(state_.ASD == 1); });
}

void fmISEcli::PlaceMessage() {
    // The graph has its size only when the panel's coming or going has been laid out.
    layout()->activate();
    const bool opening = state_.MessageAtFont18;
    QFont font = lblmsg_->font();
    font.setPointSizeF(opening ? 18 : 9.75);
    lblmsg_->setFont(font);
    const QSize room = graph_->size();
    lblmsg_->setMinimumWidth(0);
    lblmsg_->setMaximumWidth(QWIDGETSIZE_MAX);
    if (opening) {
        lblmsg_->resize(qMin(room.width() - 20, 620), qMin(room.height() - 20, 300));
        lblmsg_->MoveInside({(room.width() - lblmsg_->width()) / 2, (room.height() - lblmsg_->height()) / 2});
        return;
    }
    constexpr float Left = 3850, Top = 4680, Height = 975;
    lblmsg_->setFixedWidth(qMin(room.width() - 8, 330));
    const int needed = lblmsg_->heightForWidth(lblmsg_->width());
    lblmsg_->resize(lblmsg_->width(), qMax(needed, static_cast<int>(Height / SurfaceHeight * room.height())));
    if (lblmsg_->Dragged())
        lblmsg_->MoveInside(lblmsg_->pos());
    else
        lblmsg_->MoveInside({static_cast<int>(Left / SurfaceWidth * room.width()),
                             static_cast<int>(Top / SurfaceHeight * room.height())});
}

}  // namespace kelvo
