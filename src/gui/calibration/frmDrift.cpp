#include "calibration/frmDrift.h"

#include <QtWidgets>

#include "core/Paths.h"
#include "kit/EntryBox.h"
#include "kit/ScreenManager.h"

namespace kelvo {
namespace {

constexpr std::array<const char*, DriftSettings::Numbers> Names = {
    "Measure a standard again after so many samples (0: off):", "or after so many minutes (0: off):",
    "It may have moved by (mV, 0: any):", "and by (% of its concentration, 0: any):",
    "Standard, its number in the list (0: the middle one):"};

}  // namespace

frmDrift::frmDrift(AppContext& context) : Screen(context, ScreenCode::frmDrift, "frmDrift", Kind::Dialog) {
    setWindowTitle(QStringLiteral("Drift Checks"));
    auto* grid = new QGridLayout;
    for (int i = 0; i < DriftSettings::Numbers; ++i) {
        const auto at = static_cast<std::size_t>(i);
        auto* label = Named(new QLabel(QString::fromLatin1(Names[at])), "lblDrift", i);
        boxes_[at] = Named(EntryBox::Number(), "txtDrift", i);
        boxes_[at]->setAccessibleName(label->text());
        label->setBuddy(boxes_[at]);
        grid->addWidget(label, i, 0);
        grid->addWidget(boxes_[at], i, 1);
        connect(boxes_[at], &EntryBox::Entered, this, [this, at] {
            QWidget* next = at + 1 < boxes_.size() ? static_cast<QWidget*>(boxes_[at + 1]) : bracket_;
            next->setFocus(Qt::TabFocusReason);
        });
    }
    bracket_ = Named(new QCheckBox(QStringLiteral("&Correct the samples between two good checks")), "chkBracket");
    auto* ok = Named(new QPushButton(QStringLiteral("Ok")), "cmdDrift", 0);
    auto* cancel = Named(new QPushButton(QStringLiteral("Cancel")), "cmdDrift", 1);
    ok->setDefault(true);
    for (auto* button : {ok, cancel})
        button->setAutoDefault(true);
    Body()->setSpacing(12);
    Body()->addLayout(grid);
    Body()->addWidget(bracket_);
    Body()->addStretch();
    Body()->addLayout(ButtonRow({ok, cancel}));
    connect(ok, &QPushButton::clicked, this, &frmDrift::Ok);
    connect(cancel, &QPushButton::clicked, this, &frmDrift::OnEscape);
}

void frmDrift::OnLoad() {
    settings_ = ReadDriftSettings(state_.Get<const Paths>().IniPath);
    const DriftSettings::Texts texts = settings_.Typed();
    for (std::size_t i = 0; i < boxes_.size(); ++i)
        boxes_[i]->SetText(texts[i]);
    bracket_->setChecked(settings_.bracket);
    boxes_[0]->setFocus(Qt::OtherFocusReason);
}

void frmDrift::Ok() {
    DriftSettings::Texts texts;
    for (std::size_t i = 0; i < boxes_.size(); ++i)
        texts[i] = boxes_[i]->Text();
    std::string refused = settings_.Take(texts);
    settings_.bracket = bracket_->isChecked();
    if (refused.empty() && !WriteDriftSettings(settings_, state_.Get<const Paths>().IniPath))
        refused = "The checks could not be kept in the settings.";
    SetStatus(refused);
    if (refused.empty()) context_.screens.Close(Code());
}

void frmDrift::OnEscape() {
    context_.screens.Close(Code());
}

}  // namespace kelvo
