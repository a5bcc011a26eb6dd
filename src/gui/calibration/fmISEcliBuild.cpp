#include <QtWidgets>

#include "calibration/CaliGraph.h"
#include "calibration/FloatingMessage.h"
#include "calibration/GraphState.h"
#include "calibration/GraphWords.h"
#include "calibration/SampleBoxes.h"
#include "calibration/fmISEcli.h"
#include "core/ReadingSettings.h"
#include "kit/EntryBox.h"
#include "kit/PictureView.h"
#include "kit/ScreenManager.h"
#include "link/Link.h"
#include "tables/TablePresenter.h"

// How the calibration screen is put together; what it shows stands in fmISEcli.cpp.

namespace kelvo {

fmISEcli::fmISEcli(AppContext& context)
    : Screen(context, ScreenCode::fmISEcli, "fmISEcli", Kind::Working),
      presenter_({{context.state},
                  context.prompts,
                  context.files,
                  context.clock,
                  context.screens,
                  context.table,
                  context.link},
                 *this) {
    BuildMenus();
    graph_ = Named(new PictureView(state_.Get<GraphState>().Graph), "picGraph");
    graph_->setAccessibleName(tr("Calibration graph"));
    graph_->SetWords([this] { return CaliGraphWords(state_); });
    lblmsg_ = new FloatingMessage(graph_);
    connect(lblmsg_, &FloatingMessage::Clicked, this, [this] { presenter_.HideMessage(); });
    auto* row = new QHBoxLayout;
    row->setSpacing(12);
    row->addWidget(graph_, 1);
    panel_ = SidePanel();
    row->addWidget(panel_);
    Body()->setContentsMargins(10, 8, 10, 8);
    Body()->addLayout(row, 1);
    txtlog_ = Named(new QPlainTextEdit(this), "txtlog");
    txtlog_->setReadOnly(true);
    txtlog_->setAccessibleName(tr("Log"));
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
        // The statistics are offered as operations, but no event asks for them: their boxes stay away.
        Labslo1_[at]->hide();
        txtslope_[at]->hide();
    }
    Labslo2_ = Named(new QLabel(QStringLiteral(" mV/dec")), "Labslo2");
    slopes->addWidget(Labslo2_, 0, 2);
    box->addLayout(slopes);

    samples_ = new SampleBoxes(presenter_.Samples());
    box->addWidget(samples_);
    return panel;
}

void fmISEcli::BuildMenus() {
    BuildFileMenu();
    BuildOptionMenu();
    BuildOtherMenus();
}

void fmISEcli::OnTriggered(QAction* action, Step step) {
    connect(action, &QAction::triggered, this, [this, step] { (presenter_.*step)(); });
}

void fmISEcli::BuildFileMenu() {
    auto* file = AddMenu("mnuF", QStringLiteral("&File"));
    const auto sub = [&](int index, const QString& text) {
        auto* menu = file->addMenu(text);
        mnuFile_[static_cast<std::size_t>(index)] = Named(menu->menuAction(), "mnuFile", index);
        return menu;
    };
    const auto item = [&](int index, const QString& text, Step step) {
        auto* action = AddItem(file, "mnuFile", index, text);
        mnuFile_[static_cast<std::size_t>(index)] = action;
        OnTriggered(action, step);
    };
    item(0, QStringLiteral("&New"), &CalibrationPresenter::New);
    auto* open = sub(1, QStringLiteral("&Open"));
    auto* save = sub(2, QStringLiteral("&Save"));
    item(3, QStringLiteral("&Close"), &CalibrationPresenter::Leave);
    auto* print = sub(4, QStringLiteral("&Print"));
    item(5, QStringLiteral("E&xit"), &CalibrationPresenter::Exit);

    auto* openCalibration = AddItem(open, "mnuOpen", 0, QStringLiteral("&Calibration"));
    auto* openTable = AddItem(open, "mnuOpen", 1, QStringLiteral("&Data Table"));
    mnuSave_ = {AddItem(save, "mnuSave", 0, QStringLiteral("&Calibration")),
                AddItem(save, "mnuSave", 1, QStringLiteral("&Data Table"))};
    openCalibration->setShortcut(QKeySequence::Open);
    mnuSave_[0]->setShortcut(QKeySequence::Save);
    OnTriggered(openCalibration, &CalibrationPresenter::OpenCalibration);
    OnTriggered(openTable, &CalibrationPresenter::OpenTable);
    OnTriggered(mnuSave_[0], &CalibrationPresenter::SaveCalibration);
    OnTriggered(mnuSave_[1], &CalibrationPresenter::SaveTable);
    openTable->setEnabled(context_.screens.Knows(ScreenCode::frmQSave));
    const std::array<QString, 3> prints = {QStringLiteral("&Calibration"), QStringLiteral("Sample &Graphics"),
                                           QStringLiteral("Sample &Data Table")};
    for (int i = 0; i < 3; ++i) {
        auto* action = AddItem(print, "mnuPrint", i, prints[static_cast<std::size_t>(i)]);
        connect(action, &QAction::triggered, this, [this, i] { Print(i); });
        action->setEnabled(context_.printing != nullptr);
    }
}

void fmISEcli::BuildOptionMenu() {
    auto* option = AddMenu("mnuOption", QStringLiteral("&Option"));
    mnuOption_ = option->menuAction();
    const auto curve = [&](const char* name, const QString& text, Step step) {
        auto* action = AddItem(option, name, -1, text);
        action->setCheckable(true);
        OnTriggered(action, step);
        return action;
    };
    mnuLinear_ = curve("mnuLinear", QStringLiteral("&Linear Regression"), &CalibrationPresenter::Linear);
    mnuNonLinear_ =
        curve("mnuNonLinear", QStringLiteral("&Partly Linear Calibration"), &CalibrationPresenter::PartlyLinear);
    mnuRgrsCli_ = curve("mnuRgrsCli", QStringLiteral("&Best-fit Curve"), &CalibrationPresenter::BestCurve);
    mnuLowEnd_ = curve("mnuLowEnd", QStringLiteral("Low Concentration &Fit"), &CalibrationPresenter::LowEnd);
    BuildScaleMenus(option);
    auto* average = AddItem(option, "mnuAvg", -1, QStringLiteral("&Average Setting"));
    auto* stability = AddItem(option, "mnuASD", -1, QStringLiteral("&Edit ASD"));
    auto* view = AddItem(option, "mnuView", -1, QStringLiteral("&View Data Table"));
    auto* quality = AddItem(option, "mnuQuality", -1, QStringLiteral("Calibration &Quality"));
    mnuStandards_ = AddItem(option, "mnuStandards", -1, QStringLiteral("S&tandards..."));
    auto* drift = AddItem(option, "mnuDrift", -1, QStringLiteral("&Drift Checks..."));
    mnuDriftNow_ = AddItem(option, "mnuDriftNow", -1, QStringLiteral("Check Drift &Now"));
    mnuDriftNow_->setCheckable(true);
    OnTriggered(drift, &CalibrationPresenter::ShowDriftChecks);
    connect(mnuDriftNow_, &QAction::triggered, this, [this](bool check) { presenter_.Samples().CheckDrift(check); });
    OnTriggered(quality, &CalibrationPresenter::ShowQuality);
    OnTriggered(mnuStandards_, &CalibrationPresenter::ShowStandards);
    OnTriggered(average, &CalibrationPresenter::Average);
    OnTriggered(stability, &CalibrationPresenter::EditStability);
    OnTriggered(view, &CalibrationPresenter::ViewTable);
    stability->setEnabled(context_.screens.Knows(ScreenCode::frmAutoD));
    view->setEnabled(context_.screens.Knows(ScreenCode::frmQSave));
}

void fmISEcli::BuildScaleMenus(QMenu* option) {
    auto* scales = option->addMenu(QStringLiteral("&Change Scale"));
    mnuS_ = Named(scales->menuAction(), "mnuS");
    const auto rows = [&](int scale, const QString& title, const char* name, const auto& captions, auto& actions,
                          void (CalibrationPresenter::*change)(int)) {
        auto* menu = scales->addMenu(title);
        Named(menu->menuAction(), "mnuScale", scale);
        for (std::size_t i = 0; i < captions.size(); ++i) {
            const int index = static_cast<int>(i);
            actions[i] = AddItem(menu, name, index, QString::fromUtf8(captions[i]));
            actions[i]->setCheckable(true);
            connect(actions[i], &QAction::triggered, this, [this, change, index] { (presenter_.*change)(index); });
        }
    };
    rows(0, QStringLiteral("&mV"), "mnumV", MvCaptions, mnumV_, &CalibrationPresenter::MvScale);
    rows(1, QStringLiteral("&LogC"), "mnuLogC", LogCCaptions, mnuLogC_, &CalibrationPresenter::LogCScale);
}

void fmISEcli::BuildOtherMenus() {
    const auto top = [&](const char* name, const QString& text, Step step) {
        auto* action = Named(Menus()->addAction(text), name);
        OnTriggered(action, step);
        return action;
    };
    mnuRefresh_ = top("mnuRefresh", QStringLiteral("&Refresh"), &CalibrationPresenter::Refresh);
    auto* poten = AddMenu("mnupoten", QStringLiteral("&Potentiometry"));
    mnupoten_ = poten->menuAction();
    connect(poten, &QMenu::aboutToShow, this, [this] { presenter_.PotentiometryOpened(); });
    auto* keyboard = AddItem(poten, "mnuPotentiometry", 0, QStringLiteral("&KeyBoard Input"));
    auto* onLine = AddItem(poten, "mnuPotentiometry", 1, QStringLiteral("&OnLine Reading"));
    connect(keyboard, &QAction::triggered, this, [this] { presenter_.StartPotentiometry(false); });
    connect(onLine, &QAction::triggered, this, [this] { presenter_.StartPotentiometry(true); });
    onLine->setEnabled(context_.screens.Knows(ScreenCode::frmPtset));
    mnuRecording_ = top("mnuRecording", QStringLiteral("&Continuous Recording"), &CalibrationPresenter::Record);
    mnuQsave_ = top("mnuQsave", QStringLiteral("&Quick Save"), &CalibrationPresenter::QuickSave);
    top("mnumain", QStringLiteral("&Back"), &CalibrationPresenter::Leave);
    AddHelpMenu();
    auto* log = Named(Menus()->addAction(QStringLiteral("Show LogFile")), "mnuLog");
    log->setVisible(false);
    connect(log, &QAction::triggered, this, [this] { txtlog_->setVisible(state_.Get<ReadingSettings>().ASD == 1); });
}

void fmISEcli::PlaceMessage() {
    // The graph has its size only when the panel's coming or going has been laid out.
    layout()->activate();
    const bool opening = presenter_.Message().opening;
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
