#include "ph/frmPset.h"

#include <QtWidgets>

#include "core/AverageSetup.h"
#include "kit/EntryBox.h"
#include "kit/FormBinder.h"
#include "kit/ScreenManager.h"
#include "link/LinkStatusLabel.h"
#include "link/ShowReadingState.h"
#include "ph/PhCalibration.h"

namespace kelvo {
namespace {

constexpr int TickMs = 1000;
constexpr int Prompt = 0, PhLabel = 1, DefaultLabel = 2, FirstUnit = 3;

}  // namespace

frmPset::frmPset(AppContext& context)
    : Screen(context, ScreenCode::frmPset, "frmPset", Kind::Panel),
      form_(context.state, context.prompts, context.clock, context.link),
      binder_(new FormBinder(form_, this)) {
    BuildMenu();
    prompt_ = Named(new QLabel, "lblph", Prompt);
    prompt_->setAccessibleName(tr("What to do"));
    prompt_->setWordWrap(true);
    ok_ = Named(new QPushButton(QStringLiteral("OK")), "cmdph", 0);
    cancel_ = Named(new QPushButton(QStringLiteral("Cancel")), "cmdph", 1);
    ok_->setDefault(true);
    connect(ok_, &QPushButton::clicked, this, &frmPset::Ok);
    connect(cancel_, &QPushButton::clicked, this, &frmPset::Cancel);
    auto* foot = ButtonRow({ok_, cancel_});
    foot->insertWidget(0, new LinkStatusLabel(context.link));

    Body()->setSpacing(10);
    Body()->addWidget(prompt_);
    Body()->addWidget(Boxes());
    Body()->addStretch();
    Body()->addLayout(foot);
    setMinimumWidth(560);

    binder_->BindButton(BufferForm::OkButton - FormModel::FirstButton, ok_);
    connect(binder_, &FormBinder::Shown, this, &frmPset::ShowForm);
    TabThrough({txtph_[0], txtph_[1], txtph_[2], txtph_[3], ok_, cancel_});
    Timer1_.setInterval(TickMs);
    connect(&Timer1_, &QTimer::timeout, this, &frmPset::Tick);
}

void frmPset::BuildMenu() {
    auto* option = AddMenu("mnuO", QStringLiteral("&Option"));
    AddHelpMenu();
    connect(AddItem(option, "mnuOption", 0, QStringLiteral("&Average Setting")), &QAction::triggered, this, [this] {
        if (AskAverage(state_, context_.prompts)) form_.AverageSet();
    });
}

QWidget* frmPset::Boxes() {
    struct Row {
        const char* label;
        const char* unit;
        const char* spoken;
    };
    static constexpr std::array<Row, 4> rows = {{{"Buffer pH =", "", "pH of the buffer"},
                                                 {"", " mV", "Potential of the electrode in mV"},
                                                 {"", "°C", "Temperature in degrees Celsius"},
                                                 {"", "°F", "Temperature in degrees Fahrenheit"}}};
    auto* holder = new QWidget;
    auto* grid = new QGridLayout(holder);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setColumnStretch(3, 1);
    grid->setVerticalSpacing(8);
    for (int i = 0; i < 4; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const Row& row = rows[at];
        auto* box = txtph_[at] = Named(EntryBox::Number(), "txtph", i);
        box->setAccessibleName(QString::fromUtf8(row.spoken));
        box->setMinimumWidth(220);
        binder_->Bind(i, box);
        auto* label = Named(new QLabel(QString::fromUtf8(i == 0 ? row.label : row.unit)), "lblph",
                            i == 0 ? PhLabel : FirstUnit + i - 1);
        label->setBuddy(box);
        grid->addWidget(label, i, i == 0 ? 0 : 2);
        grid->addWidget(box, i, 1);
    }
    // Large enough to be read from two metres.
    txtph_[BufferForm::Mv]->setStyleSheet(QStringLiteral("font-size: 44pt; font-weight: 600;"));
    grid->itemAtPosition(BufferForm::Mv, 2)->widget()->setStyleSheet(QStringLiteral("font-size: 20pt;"));
    default_ =
        Named(new QLabel(QStringLiteral("              Default Value: Change if you wish")), "lblph", DefaultLabel);
    grid->addWidget(default_, BufferForm::Celsius, 3);
    return holder;
}

void frmPset::OnLoad() {
    setWindowTitle(ToQt(state_.Get<PhEntry>().PhCaption));
    prompt_->setText(ToQt(state_.Get<PhEntry>().PhPrompt));
    form_.Load();
    default_->setVisible(form_.TypedTemperature());
    binder_->WriteBack();
    Timer1_.start();
}

void frmPset::OnActivate() {
    txtph_[BufferForm::Ph]->setFocus(Qt::TabFocusReason);
}

void frmPset::Tick() {
    binder_->Perform([this] { form_.Tick(); });
}

void frmPset::ShowForm() {
    const ReadingState worth = form_.Worth();
    ShowReadingState(*this, {txtph_[BufferForm::Mv]}, worth);
    if (!form_.TypedTemperature())
        GreyValues({txtph_[BufferForm::Celsius], txtph_[BufferForm::Fahrenheit]}, !worth.IsLive());
    SetStatus(form_.Remark());
}

void frmPset::Ok() {
    if (!form_.Ok()) {
        binder_->WriteBack();
        return;
    }
    Timer1_.stop();
    context_.screens.Hide(Code());
}

void frmPset::Cancel() {
    Timer1_.stop();
    form_.Cancel();
    context_.screens.Hide(Code());
}

}  // namespace kelvo
