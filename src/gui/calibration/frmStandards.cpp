#include "calibration/frmStandards.h"

#include <QtWidgets>

#include "calibration/StandardsHost.h"
#include "kit/EntryBox.h"
#include "kit/ScreenManager.h"

namespace kelvo {
namespace {

constexpr int LeastRows = 5, LeastWidth = 620;
constexpr std::array<const char*, 4> Names = {"Uncertain by (%):", "Lot:", "Expires on:", "Blanks (mV):"};

}  // namespace

frmStandards::frmStandards(AppContext& context)
    : Screen(context, ScreenCode::frmStandards, "frmStandards", Kind::Dialog),
      standards_(context.state.Get<IseCalibration>(), context.prompts) {
    setWindowTitle(QStringLiteral("Standards"));
    list_ = Named(new QTableWidget, "grdStandards");
    list_->setAccessibleName(QStringLiteral("Standards of the calibration"));
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list_->setSelectionBehavior(QAbstractItemView::SelectRows);
    list_->setSelectionMode(QAbstractItemView::SingleSelection);
    list_->setAlternatingRowColors(true);
    list_->setTabKeyNavigation(false);
    list_->verticalHeader()->hide();
    const int height = fontMetrics().height() + 8;
    list_->verticalHeader()->setDefaultSectionSize(height);
    list_->setMinimumSize(LeastWidth, (LeastRows + 1) * height + 4);
    leave_ = Named(new QPushButton(QStringLiteral("&Leave Out...")), "cmdLeaveOut");
    takeBack_ = Named(new QPushButton(QStringLiteral("&Take Back")), "cmdTakeBack");
    auto* beside = new QVBoxLayout;
    beside->addWidget(leave_);
    beside->addWidget(takeBack_);
    beside->addStretch();
    auto* upper = new QHBoxLayout;
    upper->addWidget(list_, 1);
    upper->addLayout(beside);

    auto* grid = new QGridLayout;
    for (int i = 0; i < Boxes; ++i) {
        const auto at = static_cast<std::size_t>(i);
        auto* label = Named(new QLabel(QString::fromLatin1(Names[at])), "lblTold", i);
        boxes_[at] = Named(i == RelativeU ? EntryBox::Number() : EntryBox::Words(), "txtTold", i);
        boxes_[at]->setAccessibleName(label->text());
        label->setBuddy(boxes_[at]);
        grid->addWidget(label, i, 0);
        grid->addWidget(boxes_[at], i, 1);
        connect(boxes_[at], &EntryBox::Entered, this, [this, i] {
            if (i + 1 < Boxes)
                boxes_[static_cast<std::size_t>(i) + 1]->setFocus(Qt::TabFocusReason);
            else
                Ok();
        });
        connect(boxes_[at], &EntryBox::FocusLost, this, [this] {
            TakeBoxes();
            ShowButtons();
        });
    }
    boxes_[Expires]->setPlaceholderText(QStringLiteral("2027-01-31"));
    read_ = Named(new QPushButton(QStringLiteral("&Read Blank...")), "cmdRead");
    grid->addWidget(read_, Blanks, 2);
    grid->setColumnStretch(1, 1);
    lblBlanks_ = Named(new QLabel, "lblBlanks");
    lblBlanks_->setAccessibleName(QStringLiteral("What the blanks say"));
    lblBlanks_->setWordWrap(true);
    grid->addWidget(lblBlanks_, Boxes, 1, 1, 2);

    auto* ok = Named(new QPushButton(QStringLiteral("Ok")), "cmdStandards", 0);
    auto* cancel = Named(new QPushButton(QStringLiteral("Cancel")), "cmdStandards", 1);
    ok->setDefault(true);
    for (auto* button : {leave_, takeBack_, read_, ok, cancel})
        button->setAutoDefault(true);
    Body()->setSpacing(12);
    Body()->addLayout(upper, 1);
    Body()->addLayout(grid);
    Body()->addLayout(ButtonRow({ok, cancel}));
    connect(list_, &QTableWidget::itemSelectionChanged, this, &frmStandards::ShowButtons);
    connect(leave_, &QPushButton::clicked, this, &frmStandards::LeaveOut);
    connect(takeBack_, &QPushButton::clicked, this, &frmStandards::TakeBack);
    connect(read_, &QPushButton::clicked, this, &frmStandards::Read);
    connect(ok, &QPushButton::clicked, this, &frmStandards::Ok);
    connect(cancel, &QPushButton::clicked, this, &frmStandards::OnEscape);
}

void frmStandards::OnLoad() {
    standards_.Begin();
    ShowAll();
}

void frmStandards::OnActivate() {
    list_->setCurrentCell(0, 0);
    list_->setFocus(Qt::OtherFocusReason);
}

void frmStandards::TakeBoxes() {
    standards_.Tell({boxes_[RelativeU]->Text(), boxes_[Lot]->Text(), boxes_[Expires]->Text(), boxes_[Blanks]->Text()});
}

void frmStandards::ShowAll() {
    const int row = list_->currentRow();
    const auto rows = standards_.Rows();
    QStringList heads;
    for (const std::string& head : StandardsPresenter::Heads())
        heads << ToQt(head);
    list_->setColumnCount(static_cast<int>(heads.size()));
    list_->setHorizontalHeaderLabels(heads);
    list_->setRowCount(static_cast<int>(rows.size()));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        QFont font = list_->font();
        font.setStrikeOut(standards_.IsLeftOut(i));
        for (std::size_t col = 0; col < rows[i].size(); ++col) {
            const bool words = col + 1 == rows[i].size();
            auto* item = new QTableWidgetItem(ToQt(rows[i][col]));
            item->setTextAlignment(Qt::AlignVCenter | (words ? Qt::AlignLeft : Qt::AlignRight));
            if (!words) item->setFont(font);
            list_->setItem(static_cast<int>(i), static_cast<int>(col), item);
        }
    }
    list_->resizeColumnsToContents();
    list_->horizontalHeader()->setSectionResizeMode(static_cast<int>(heads.size()) - 1, QHeaderView::Stretch);
    if (row >= 0) list_->setCurrentCell(row, 0);
    const StandardsTold& told = standards_.Told();
    const std::array<const std::string*, Boxes> texts = {&told.relativeU, &told.lot, &told.expires, &told.blanks};
    for (std::size_t i = 0; i < texts.size(); ++i)
        boxes_[i]->SetText(*texts[i]);
    ShowButtons();
}

void frmStandards::ShowButtons() {
    const int row = list_->currentRow();
    const bool leftOut = row >= 0 && standards_.IsLeftOut(static_cast<std::size_t>(row));
    leave_->setEnabled(row >= 0 && !leftOut);
    takeBack_->setEnabled(leftOut);
    // While samples are read the interface is theirs.
    read_->setEnabled(context_.link != nullptr && context_.screens.Knows(ScreenCode::frmPtset) &&
                      !context_.screens.IsLoaded(ScreenCode::frmPtset));
    lblBlanks_->setText(ToQt(standards_.BlanksText()));
}

void frmStandards::LeaveOut() {
    if (list_->currentRow() < 0) return;
    TakeBoxes();
    const std::string told = standards_.LeaveOut(static_cast<std::size_t>(list_->currentRow()));
    ShowAll();
    SetStatus(told);
}

void frmStandards::TakeBack() {
    if (list_->currentRow() < 0) return;
    TakeBoxes();
    standards_.TakeBack(static_cast<std::size_t>(list_->currentRow()));
    ShowAll();
    SetStatus({});
}

void frmStandards::Read() {
    TakeBoxes();
    if (!ReadOne(context_)) return;
    ShowAll();
    read_->setFocus(Qt::OtherFocusReason);
}

bool frmStandards::TakeSample(const std::string& millivolts) {
    if (!Doubt().empty()) {
        SetStatus(millivolts + " mV was no live reading: " + Doubt() + ". It has not been taken.");
        return true;
    }
    standards_.AddBlank(millivolts);
    SetStatus({});
    return true;
}

void frmStandards::Ok() {
    TakeBoxes();
    const std::string refused = standards_.Close();
    if (!refused.empty()) {
        ShowAll();
        SetStatus(refused);
        return;
    }
    if (auto* host = dynamic_cast<StandardsHost*>(context_.screens.Find(ScreenCode::fmISEcli)))
        host->TakeStandards(standards_.Standards(), standards_.Told());
    context_.screens.Close(Code());
}

void frmStandards::OnEscape() {
    context_.screens.Close(Code());
}

}  // namespace kelvo
