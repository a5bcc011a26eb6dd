#include "addition/frmAdditions.h"

#include <QtWidgets>

#include "addition/frmAddition.h"
#include "core/Dialogs.h"
#include "core/Paths.h"
#include "core/Progress.h"
#include "core/SaveAndOpen.h"
#include "core/StatusMessages.h"
#include "kit/EntryBox.h"
#include "kit/PictureView.h"
#include "kit/ScreenManager.h"
#include "statistics/Figures.h"
#include "tables/SeriesReport.h"
#include "text/Files.h"

namespace kelvo {
namespace {

using F = SeriesForm;

const char* const Ending = ".additions";
const char* const LoseEntries = "The additions are in no file and in no table. Would you like to leave them?";

}  // namespace

frmAdditions::frmAdditions(AppContext& context)
    : Screen(context, ScreenCode::frmAdditions, "frmAdditions", Kind::Working), form_(context.prompts), binder_(form_) {
    setWindowTitle(QStringLiteral("Several Additions"));
    BuildMenus();
    auto* across = new QHBoxLayout;
    across->setSpacing(14);
    auto* left = new QVBoxLayout;
    left->addWidget(BuildStart());
    left->addStretch();
    across->addLayout(left);
    across->addWidget(BuildAdditions());
    picture_ = Named(new PictureView(plot_), "picGran");
    picture_->setAccessibleName(QStringLiteral("Gran's plot and residuals"));
    picture_->SetWords([this] { return form_.Outcome().PlotWords(); });
    picture_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    constexpr int LeastPlot = 320;  // 1366 × 768 at a scale of 1.5
    picture_->setMinimumWidth(LeastPlot);
    across->addWidget(picture_, 1);
    Body()->setSpacing(8);
    Body()->addLayout(across, 1);
    Body()->addWidget(BuildOutcome());
    connect(&binder_, &FormBinder::Shown, this, &frmAdditions::ShowRest);
    unsaved_ = context.unsaved.Add([this]() -> std::vector<UnsavedPiece> {
        if (!form_.HoldsEntries() || form_.Bytes() == kept_) return {};
        return {{"the several additions", Ending, form_.Bytes(), {}}};
    });
}

void frmAdditions::BuildMenus() {
    auto* file = AddMenu("mnuAFile", QStringLiteral("&File"));
    auto* fresh = AddItem(file, "mnuANew", -1, QStringLiteral("&New"));
    auto* open = AddItem(file, "mnuAOpen", -1, QStringLiteral("&Open"));
    auto* save = AddItem(file, "mnuASave", -1, QStringLiteral("&Save"));
    auto* print = AddItem(file, "mnuAPrint", -1, QStringLiteral("&Print"));
    auto* close = AddItem(file, "mnuAClose", -1, QStringLiteral("&Close"));
    open->setShortcut(QKeySequence::Open);
    save->setShortcut(QKeySequence::Save);
    print->setShortcut(QKeySequence::Print);
    print->setEnabled(context_.printing != nullptr);
    auto* option = AddMenu("mnuAOption", QStringLiteral("&Option"));
    auto* plan = AddItem(option, "mnuAPlan", -1, QStringLiteral("&Plan Additions..."));
    mnuFit_ = AddItem(option, "mnuAFit", -1, QStringLiteral("&Fit the Slope"));
    mnuFit_->setCheckable(true);
    mnuSaveRow_ = Named(Menus()->addAction(QStringLiteral("Save &Data")), "mnuASaveRow");
    AddHelpMenu();
    connect(fresh, &QAction::triggered, this, &frmAdditions::New);
    connect(open, &QAction::triggered, this, &frmAdditions::Open);
    connect(save, &QAction::triggered, this, &frmAdditions::Save);
    connect(print, &QAction::triggered, this, &frmAdditions::Print);
    connect(close, &QAction::triggered, this, &frmAdditions::OnEscape);
    connect(plan, &QAction::triggered, this, &frmAdditions::Plan);
    connect(mnuFit_, &QAction::triggered, this, [this](bool fit) {
        form_.FitSlope(fit);
        ShowRest();
    });
    connect(mnuSaveRow_, &QAction::triggered, this, &frmAdditions::SaveRow);
}

EntryBox* frmAdditions::Box(int i, const QString& name) {
    auto* box = Named(EntryBox::Number(), "txtAddition", i);
    box->setAccessibleName(name);
    box->setMinimumWidth(box->fontMetrics().horizontalAdvance(QStringLiteral("00000000")));
    binder_.Bind(i, box);
    boxes_[static_cast<std::size_t>(i)] = box;
    return box;
}

QWidget* frmAdditions::BuildStart() {
    auto* frame = Named(new QWidget, "fraStart");
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(0, 0, 0, 0);
    const std::array<const char*, F::FirstMl> names = {
        "First volume (mL):",        "Standard (ppm):", "Slope (mV/dec):",           "Expected (ppm):",
        "Dilution factor:",          "Blank (ppm):",    "Its std. deviation (ppm):", "Standard uncertain by (%):",
        "Known concentration (ppm):"};
    for (int i = 0; i < F::FirstMl; ++i) {
        auto* label = Named(new QLabel(QString::fromLatin1(names[static_cast<std::size_t>(i)])), "lblStart", i);
        EntryBox* box = Box(i, label->text());
        label->setBuddy(box);
        grid->addWidget(label, i, 0);
        grid->addWidget(box, i, 1);
    }
    return frame;
}

QWidget* frmAdditions::BuildAdditions() {
    auto* frame = Named(new QWidget, "fraAdditions");
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setVerticalSpacing(3);
    const std::array<const char*, 4> heads = {"", "Added (mL)", "Potential (mV)", "Residual"};
    for (int col = 0; col < 4; ++col)
        grid->addWidget(new QLabel(QString::fromLatin1(heads[static_cast<std::size_t>(col)])), 0, col);
    for (int i = 0; i <= F::Additions; ++i) {
        const QString number = i == 0 ? QStringLiteral("before") : QString::number(i);
        grid->addWidget(new QLabel(number), i + 1, 0);
        if (i > 0)
            grid->addWidget(Box(F::FirstMl + i - 1, QStringLiteral("Volume of addition %1, mL").arg(i)), i + 1, 1);
        grid->addWidget(Box(F::FirstMv + i, i == 0 ? QStringLiteral("Potential before the additions, mV")
                                                   : QStringLiteral("Potential after addition %1, mV").arg(i)),
                        i + 1, 2);
        auto* residual = Named(new QLabel, "lblResidual", i);
        residual->setAccessibleName(QStringLiteral("Residual of potential %1, mV").arg(i));
        residual->setMinimumWidth(residual->fontMetrics().horizontalAdvance(QStringLiteral("-00.00 ")));
        residual->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(residual, i + 1, 3);
        residuals_[static_cast<std::size_t>(i)] = residual;
    }
    read_ = Named(new QPushButton(QStringLiteral("&Read Potential...")), "cmdRead");
    read_->setAutoDefault(true);
    connect(read_, &QPushButton::clicked, this, &frmAdditions::Read);
    grid->addWidget(read_, F::Additions + 2, 1, 1, 2);
    grid->setRowStretch(F::Additions + 3, 1);
    // In the order of the work: potential, volume, potential ...
    for (int i = 0; i < F::Additions; ++i) {
        const auto at = static_cast<std::size_t>(i);
        setTabOrder(boxes_[F::FirstMv + at], boxes_[F::FirstMl + at]);
        setTabOrder(boxes_[F::FirstMl + at], boxes_[F::FirstMv + at + 1]);
    }
    return frame;
}

QWidget* frmAdditions::BuildOutcome() {
    auto* frame = Named(new QWidget, "fraOutcome");
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(3);
    lblResult_ = Named(new QLabel, "lblResult");
    lblBudget_ = Named(new QLabel, "lblBudget");
    lblRemarks_ = Named(new QLabel, "lblRemarks");
    lblResult_->setAccessibleName(QStringLiteral("Result"));
    lblBudget_->setAccessibleName(QStringLiteral("What the interval holds"));
    lblRemarks_->setAccessibleName(QStringLiteral("Remarks"));
    QFont large = lblResult_->font();
    constexpr double Growth = 1.4;
    large.setPointSizeF(large.pointSizeF() * Growth);
    large.setBold(true);
    lblResult_->setFont(large);
    for (QLabel* label : {lblResult_, lblBudget_, lblRemarks_}) {
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        column->addWidget(label);
    }
    return frame;
}

AdditionPresenter* frmAdditions::Method() const {
    for (const ScreenCode code : {ScreenCode::frmStanad01, ScreenCode::frmSampa})
        if (auto* screen = dynamic_cast<frmAddition*>(context_.screens.Find(code))) return &screen->Presenter();
    return nullptr;
}

void frmAdditions::OnLoad() {
    New();
}

void frmAdditions::OnActivate() {
    if (Method() != nullptr)
        if (Screen* owner = context_.screens.Find(Method()->Method().screen);
            owner != nullptr && windowHandle() != nullptr)
            windowHandle()->setTransientParent(owner->windowHandle());
    binder_.WriteBack();
}

void frmAdditions::OnUnload() {
    context_.screens.Close(ScreenCode::frmPtset);
}

void frmAdditions::New() {
    form_.Begin(Method() != nullptr ? Method()->Form().Series() : SeriesStart());
    kept_ = form_.Bytes();
    told_.clear();
    setWindowTitle(Method() != nullptr && form_.SampleAdded() ? QStringLiteral("Several Additions of the Sample")
                                                              : QStringLiteral("Several Additions of the Standard"));
    binder_.WriteBack();
}

void frmAdditions::ShowRest() {
    const SeriesOutcome outcome = form_.Outcome();
    lblResult_->setText(ToQt(outcome.Line()));
    std::string budget;
    for (std::size_t i = 0; i < outcome.budget.Parts().size(); ++i) {
        const Contribution& part = outcome.budget.Parts()[i];
        budget += (budget.empty() ? "It holds: " : "; ") + part.name + " " + WithPlaces(outcome.budget.Share(i), 0) +
                  " % (" + part.source + ")";
    }
    lblBudget_->setText(ToQt(budget));
    lblRemarks_->setText(ToQt(outcome.Remarks()));
    lblRemarks_->setVisible(!lblRemarks_->text().isEmpty());
    for (std::size_t i = 0; i < residuals_.size(); ++i) {
        const bool known = outcome.result && i < outcome.result->residuals.size();
        residuals_[i]->setText(known ? ToQt(WithPlaces(outcome.result->residuals[i], 2)) : QString());
    }
    mnuFit_->setChecked(form_.FitsSlope());
    boxes_[F::Slope]->setEnabled(!form_.FitsSlope());
    mnuSaveRow_->setEnabled(outcome.result.has_value() && Method() != nullptr);
    read_->setEnabled(form_.NextPotential().has_value() && context_.link != nullptr &&
                      context_.screens.Knows(ScreenCode::frmPtset));
    SetStatus(form_.Told().empty() ? told_ : form_.Told());
    plot_ = outcome.Plot();
    picture_->update();
}

void frmAdditions::OnEscape() {
    const bool loses = form_.HoldsEntries() && form_.Bytes() != kept_;
    if (loses && !context_.prompts.Ask(LoseEntries, true)) return;
    context_.screens.Close(Code());
}

void frmAdditions::Plan() {
    const auto additions = context_.prompts.Input("Plan Additions", "How many additions, 1 to 10?", "5");
    if (!additions) return;
    told_ = form_.Plan(*additions);
    binder_.WriteBack();
}

// --- on line -----------------------------------------------------------------------------------------------------

void frmAdditions::Read() {
    const auto box = form_.NextPotential();
    if (!box) return;
    readInto_ = *box;
    if (!ReadOne(context_)) return;
    binder_.WriteBack();
    read_->setFocus(Qt::OtherFocusReason);
}

std::string frmAdditions::ReadingPrompt() const {
    if (readInto_ == F::FirstMv)
        return form_.SampleAdded() ? "Please immerse the electrode in the standard solution,"
                                   : "Please immerse the electrode in the sample,";
    const int addition = readInto_ - F::FirstMv;
    return "Please make addition " + std::to_string(addition) + ", " + form_.Text(F::FirstMl + addition - 1) + " mL,";
}

std::optional<std::string> frmAdditions::CalibrationCelsius() const {
    return Method() != nullptr ? std::optional(Method()->CalibrationCelsius()) : std::nullopt;
}

bool frmAdditions::TakeSample(const std::string& millivolts) {
    form_.TakePotential(readInto_, millivolts);
    told_ =
        Doubt().empty() ? std::string() : millivolts + " mV was no live reading when it was taken: " + Doubt() + ".";
    return true;
}

// --- files, paper, table -----------------------------------------------------------------------------------------

void frmAdditions::Open() {
    const Paths& paths = state_;
    const auto name = context_.files.Open({"Several Additions(*.additions)|*.additions", paths.DataPath, {}});
    if (!name || name->empty()) return;
    std::string refused;
    const bool read =
        TakeFileStep(context_.prompts, "Opening", *name, [&] { refused = form_.Take(ReadWholeFile(*name)); });
    if (!read) return;
    if (!refused.empty()) return context_.prompts.Message(*name + ": " + refused + ".", {}, Icon::Exclamation);
    kept_ = form_.Bytes();
    told_ = "Opened. The scatter and the slope are not those of the calibration in use.";
    binder_.WriteBack();
}

void frmAdditions::Save() {
    const Paths& paths = state_;
    const auto name =
        AskNameToSave(context_.prompts, context_.files,
                      {.dialog = {"Several Additions(*.additions)|*.additions", paths.DataPath, {}}, .ending = Ending});
    if (!name) return;
    if (!TakeFileStep(context_.prompts, "Saving", *name, [&] { ReplaceWholeFile(*name, form_.Bytes()); })) return;
    kept_ = form_.Bytes();
    told_ = "Saved.";
    ShowRest();
}

void frmAdditions::Print() {
    if (context_.printing == nullptr) return;
    Progress none;
    PrintSeriesDocument(state_, form_, FromQt(windowTitle()),
                        {*context_.printing, context_.prompts, context_.clock, none});
    if (!state_.Get<StatusMessages>().StatusMessage.empty()) TakeStatusMessage();
}

void frmAdditions::SaveRow() {
    AdditionPresenter* method = Method();
    if (method == nullptr) return;
    const bool saved = method->SaveSeries(form_.Outcome());
    if (context_.screens.Ended() || !saved) return;
    kept_ = form_.Bytes();
    told_ = "A row has been added to the data table.";
    ShowRest();
}

}  // namespace kelvo
