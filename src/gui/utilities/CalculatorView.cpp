#include "utilities/CalculatorView.h"

#include <QtWidgets>

#include "core/Dialogs.h"
#include "core/IonSettings.h"
#include "core/Navigation.h"
#include "core/Routes.h"
#include "devices/ScreenPrint.h"
#include "kit/EntryBox.h"
#include "kit/ScreenManager.h"

namespace kelvo {
namespace {

constexpr double LetterGrowth = 1.15;  ///< boxes are read at arm's length
constexpr int WidestBox = 260, RoomBetween = 10;
constexpr int ColumnsAPlace = 3;  ///< caption, box, unit

}  // namespace

CalculatorView::CalculatorView(AppContext& context, ScreenCode code, const Names& names,
                               std::unique_ptr<CalculatorForm> form)
    : Screen(context, code, names.form, Kind::Working), names_(names), form_(std::move(form)), binder_(*form_) {
    letters_ = font();
    letters_.setPointSizeF(letters_.pointSizeF() * LetterGrowth);
    Body()->setSpacing(12);
    AddMenus();
    connect(&binder_, &FormBinder::Shown, this, &CalculatorView::ShowStatus);
}

void CalculatorView::AddMenus() {
    auto* file = AddMenu("mnuF", QStringLiteral("&File"));
    connect(AddItem(file, "mnuFile", 0, QStringLiteral("&Print")), &QAction::triggered, this,
            [this] { PrintScreen(context_, *this); });
    connect(AddItem(file, "mnuFile", 1, QStringLiteral("&Close")), &QAction::triggered, this, &CalculatorView::GoBack);
    connect(AddItem(file, "mnuFile", 2, QStringLiteral("E&xit")), &QAction::triggered, this, &CalculatorView::Exit);
    auto* back = Named(Menus()->addAction(QStringLiteral("&Back")), "mnuBack");
    connect(back, &QAction::triggered, this, &CalculatorView::GoBack);
    AddHelpMenu();
}

QHBoxLayout* CalculatorView::AddHead(const QString& ionCaption) {
    ionBox_ = Named(new QComboBox, names_.ionBox);
    ionBox_->setAccessibleName(ionCaption);
    ionBox_->setMinimumWidth(130);
    ionBox_->setMaxVisibleItems(CalculatorForm::IonCount);
    for (std::size_t i = 0; i < CalculatorForm::IonCount; ++i)
        ionBox_->addItem(ToQt(state_.Get<IonSettings>().Ions.names[i]),
                         qRound(double{state_.Get<IonSettings>().Ions.weights[i]} * 100000));
    ionBox_->setCurrentIndex(NoIon);
    binder_.BindList(CalculatorForm::IonList, ionBox_);

    refresh_ = Named(new QPushButton(QStringLiteral("Refresh")), names_.refresh);
    refresh_->setAutoDefault(true);
    refresh_->setShortcut(QKeySequence(Qt::ALT | Qt::Key_R));
    refresh_->setToolTip(refresh_->shortcut().toString(QKeySequence::NativeText));
    binder_.BindButton(CalculatorForm::RefreshButton, refresh_);

    auto* caption = new QLabel(ionCaption);
    caption->setBuddy(ionBox_);
    auto* room = new QHBoxLayout;
    room->setSpacing(8);
    auto* head = new QHBoxLayout;
    head->setSpacing(8);
    head->addWidget(caption);
    head->addWidget(ionBox_);
    head->addSpacing(28);
    head->addLayout(room);
    head->addStretch();
    head->addWidget(refresh_);
    Body()->addLayout(head);
    return room;
}

QGridLayout* CalculatorView::AddBlock(const QString& caption, QBoxLayout* into) {
    auto* block = new QGroupBox(caption);
    auto* grid = new QGridLayout(block);
    grid->setContentsMargins(18, 16, 18, 16);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(8);
    (into == nullptr ? Body() : into)->addWidget(block, 1);
    return grid;
}

EntryBox* CalculatorView::Box(int i, const QString& accessibleName) {
    auto* box = EntryBox::Number();
    if (names_.box[0] != '\0') Named(box, names_.box, i);
    box->setAccessibleName(accessibleName);
    box->setFont(letters_);
    box->setMinimumWidth(QFontMetrics(letters_).horizontalAdvance(QStringLiteral("0000000000000")));
    box->setMaximumWidth(WidestBox);
    binder_.Bind(i, box);
    boxes_.push_back(box);
    return box;
}

void CalculatorView::AddField(QGridLayout* grid, int row, int place, int i, const QString& caption, const QString& unit,
                              const QString& accessibleName) {
    auto* box = Box(i, accessibleName);
    auto* left = new QLabel(caption);
    left->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    left->setBuddy(box);
    left->setWordWrap(true);
    const int column = place * ColumnsAPlace;
    grid->addWidget(left, row, column);
    grid->addWidget(box, row, column + 1);
    grid->addWidget(new QLabel(unit), row, column + 2);
}

void CalculatorView::AlignField(QGridLayout* grid, int place, int captionWidth, int unitWidth) {
    const int column = place * ColumnsAPlace;
    grid->setColumnMinimumWidth(column, captionWidth);
    for (int row = 0; row < grid->rowCount(); ++row)
        if (const auto* item = grid->itemAtPosition(row, column)) item->widget()->setFixedWidth(captionWidth);
    grid->setColumnStretch(column + 1, 1);
    grid->setColumnMinimumWidth(column + 2, unitWidth + RoomBetween);
}

void CalculatorView::FinishBody() {
    QWidget* before = ionBox_;
    for (EntryBox* box : boxes_) {
        setTabOrder(before, box);
        before = box;
    }
    setTabOrder(before, refresh_);
    // A style sheet keeps the window's letters from its labels and boxes, so each is told.
    for (QLabel* label : findChildren<QLabel*>())
        label->setFont(letters_);
    ionBox_->setFont(letters_);
    refresh_->setFont(letters_);
}

void CalculatorView::ShowStatus() {
    const std::string status = form_->StatusMessage();
    if (std::exchange(status_, status) != status) SetStatus(status);
}

void CalculatorView::OnLoad() {
    state_.Get<Navigation>().SetReturn(Code());
    binder_.WriteBack();
}

void CalculatorView::OnActivate() {
    if (focusWidget() == nullptr || focusWidget() == this) ionBox_->setFocus();
}

void CalculatorView::GoBack() {
    ClearPaths(state_);
    state_.Get<Navigation>().SetReturn(ScreenCode::None);
    context_.screens.Show(ScreenCode::frmenu);
    context_.screens.Close(Code());
}

void CalculatorView::Exit() {
    if (context_.prompts.Ask(text::SureToExit, true)) context_.screens.EndProgram();
}

}  // namespace kelvo
