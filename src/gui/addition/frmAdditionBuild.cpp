#include <QtWidgets>

#include "addition/frmAddition.h"
#include "core/IonSettings.h"
#include "devices/ScreenPrint.h"
#include "kit/EntryBox.h"
#include "kit/ScreenManager.h"
#include "tables/TablePresenter.h"

// How the addition screens are put together; what they do stands in frmAddition.cpp.

namespace kelvo {
namespace {

using B = AdditionForm;

constexpr double LetterGrowth = 1.1;  ///< boxes are read at arm's length
constexpr double ResultGrowth = 1.8;
constexpr int RoomAround = 10;
constexpr QMargins Margins(12, 8, 12, 8);
/// Columns of every group: caption, box, unit, and again with room for a second unit.
constexpr int First = 0, Second = 3, Columns = 8;
constexpr int StatusLines = 3;  ///< a result with its uncertainty and a warning moves no box

}  // namespace

frmAddition::frmAddition(AppContext& context, const AdditionMethod& method, const Names& names)
    : Screen(context, method.screen, names.form, Kind::Working),
      names_(names),
      presenter_(context.state, context.prompts, context.files, context.clock, context.table, method, *this),
      binder_(presenter_.Form()) {
    QFont letters = font();
    letters.setPointSizeF(letters.pointSizeF() * LetterGrowth);
    letters_ = letters;
    Body()->setSpacing(8);
    Body()->setContentsMargins(Margins);
    BuildMenus();
    BuildSample();
    BuildStandard();
    BuildSlope();
    BuildPotentials();
    BuildResult();
    Arrange();
    connect(&binder_, &FormBinder::Shown, this, &frmAddition::ShowRest);
}

// --- menus ---------------------------------------------------------------------------------------------------

QAction* frmAddition::Item(QMenu* menu, const char* name, int index, const char* text,
                           void (AdditionPresenter::*slot)()) {
    auto* action = AddItem(menu, name, index, QString::fromLatin1(text));
    connect(action, &QAction::triggered, this, [this, slot] { (presenter_.*slot)(); });
    return action;
}

void frmAddition::BuildFileMenu() {
    using P = AdditionPresenter;
    auto* file = AddMenu("mnuF", QStringLiteral("&File"));
    Item(file, "mnuFile", 0, "&New", &P::New);
    auto* open = file->addMenu(QStringLiteral("&Open"));
    auto* save = file->addMenu(QStringLiteral("&Save"));
    Item(file, "mnuFile", 3, "&Close", &P::Back);
    auto* print = file->addMenu(QStringLiteral("&Print"));
    Item(file, "mnuFile", 5, "E&xit", &P::Exit);
    Named(open->menuAction(), "mnuFile", 1);
    Named(save->menuAction(), "mnuFile", 2);
    Named(print->menuAction(), "mnuFile", 4);
    Item(open, "mnuOpen", 0, "&Measurement Data", &P::OpenMeasurement)->setShortcut(QKeySequence::Open);
    Item(open, "mnuOpen", 1, "&Data Table", &P::OpenTable)->setEnabled(context_.screens.Knows(ScreenCode::frmQSave));
    Item(save, "mnuSave", 0, "&Screen", &P::SaveMeasurement)->setShortcut(QKeySequence::Save);
    Item(save, "mnuSave", 1, "&Data Table", &P::SaveTable);
    auto* screen = AddItem(print, "mnuPrint", 0, QStringLiteral("&Screen"));
    screen->setShortcut(QKeySequence::Print);
    connect(screen, &QAction::triggered, this, [this] { PrintScreen(context_, *this); });
    printTable_ = AddItem(print, "mnuPrint", 1, QStringLiteral("&Data Table"));
    connect(printTable_, &QAction::triggered, this, &frmAddition::PrintTable);
}

void frmAddition::BuildMenus() {
    using P = AdditionPresenter;
    BuildFileMenu();
    auto* option = AddMenu("mnuO", QStringLiteral("&Option"));
    Item(option, "mnuOption", 0, "&Average Setting", &P::SetAverage);
    editAsd_ = AddItem(option, "mnuOption", 1, QStringLiteral("&Edit ASD"));
    editAsd_->setVisible(false);
    connect(editAsd_, &QAction::triggered, this, [this] { context_.screens.ShowModal(ScreenCode::frmAutoD); });
    Item(option, "mnuOption", 2, "&View Data Table", &P::ViewTable)
        ->setEnabled(context_.screens.Knows(ScreenCode::frmQSave));
    auto* several = AddItem(option, "mnuOption", 3, QStringLiteral("&Several Additions..."));
    several->setEnabled(context_.screens.Knows(ScreenCode::frmAdditions));
    connect(several, &QAction::triggered, this, [this] { context_.screens.ShowModal(ScreenCode::frmAdditions); });
    const auto top = [this](const char* name, const char* text, void (P::*slot)()) {
        auto* action = Named(Menus()->addAction(QString::fromLatin1(text)), name);
        connect(action, &QAction::triggered, this, [this, slot] { (presenter_.*slot)(); });
    };
    top("mnuBack", "&Back", &P::Back);
    top("mnuSaveData", "Save &Data", &P::SaveRow);
    AddHelpMenu();
}

// --- groups --------------------------------------------------------------------------------------------------

QGridLayout* frmAddition::Group(const char* caption, const char* name, int rows) {
    auto* group = Named(new QGroupBox(QString::fromUtf8(caption)), name);
    auto* grid = new QGridLayout(group);
    grid->setContentsMargins(14, 6, 14, 8);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(6);
    Body()->addWidget(group, rows);
    grids_.push_back(grid);
    return grid;
}

void frmAddition::ShareWidth(QWidget& box) const {
    // All boxes of a row share its room alike, whatever they hold, so that the groups have the same columns.
    box.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    box.setMinimumWidth(QFontMetrics(letters_).horizontalAdvance(QStringLiteral("000000000")));
}

EntryBox* frmAddition::Box(int i, const QString& accessibleName) {
    auto* box = Named(EntryBox::Number(), "txtbox", i);
    box->setAccessibleName(accessibleName);
    box->setFont(letters_);
    ShareWidth(*box);
    binder_.Bind(i, box);
    boxes_[static_cast<std::size_t>(i)] = box;
    return box;
}

QLabel* frmAddition::Caption(const char* text, QWidget* buddy) {
    auto* label = new QLabel(QString::fromUtf8(text));
    label->setFont(letters_);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setBuddy(buddy);
    return label;
}

void frmAddition::Boxes(QGridLayout* grid, int row, int column, const char* caption,
                        std::initializer_list<std::pair<int, const char*>> boxes) {
    for (const auto& [box, unit] : boxes) {
        const QString unitText = QString::fromUtf8(unit);
        grid->addWidget(Box(box, QString::fromUtf8(caption).simplified() + QLatin1Char(' ') + unitText), row, column++);
        auto* label = new QLabel(unitText);
        label->setFont(letters_);
        grid->addWidget(label, row, column++);
    }
}

void frmAddition::Field(QGridLayout* grid, int row, int column, const char* caption,
                        std::initializer_list<std::pair<int, const char*>> boxes) {
    Boxes(grid, row, column + 1, caption, boxes);
    QLabel* label = Caption(caption, BoxAt(boxes.begin()->first));
    grid->addWidget(label, row, column);
    int& width = column == First ? firstWidth_ : secondWidth_;
    width = std::max(width, label->sizeHint().width());
}

void frmAddition::BuildSample() {
    auto* grid = Group("Sample", "FramSample", 2);
    cmbIon_ = Named(new QComboBox, "cmbIon");
    cmbIon_->setAccessibleName(QStringLiteral("Detected Ion"));
    cmbIon_->setFont(letters_);
    ShareWidth(*cmbIon_);
    cmbIon_->setMaxVisibleItems(IonRows);
    for (std::size_t i = 0; i < IonRows; ++i)
        cmbIon_->addItem(ToQt(state_.Get<IonSettings>().Ions.names[i]),
                         qRound(double{state_.Get<IonSettings>().Ions.weights[i]} * 100000));
    cmbIon_->setCurrentIndex(NoIon);
    binder_.BindList(B::IonList, cmbIon_);
    grid->addWidget(Caption("Detected  Ion", cmbIon_), 0, First);
    grid->addWidget(cmbIon_, 0, First + 1);
    Label28_ = Named(new QLabel, "Label28");
    Label28_->setFont(letters_);
    Label28_->setAccessibleName(QStringLiteral("Date and time of the measurement"));
    Label28_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(Label28_, 0, Second, 1, Columns - Second);
    Field(grid, 1, First, "Volume", {{B::SampleMl, "mL"}});
    Field(grid, 1, Second, "Expected Concentration", {{B::ExpectedPpm, "ppm"}, {B::ExpectedMolar, "mol/L"}});
}

void frmAddition::BuildStandard() {
    auto* grid = Group("Standard", "FramStandard", 2);
    Field(grid, 0, First, names_.suggestVolume, {{B::SuggestMl, "mL"}});
    Field(grid, 0, Second, "Suggest Concentration", {{B::SuggestPpm, "ppm"}, {B::SuggestMolar, "mol/L"}});
    Field(grid, 1, First, names_.actualVolume, {{B::ActualMl, "mL"}});
    Field(grid, 1, Second, names_.actualConcentration, {{B::ActualPpm, "ppm"}, {B::ActualMolar, "mol/L"}});
}

void frmAddition::BuildSlope() {
    auto* grid = Group("Calibration", "FramSlope", 1);
    Field(grid, 0, First, "Electrode Slope ", {{B::Slope, "mV/dec"}});
    Field(grid, 0, Second, "Calibration Temperature", {{B::CaliCelsius, "°C"}, {B::CaliFahrenheit, "°F"}});
}

void frmAddition::BuildPotentials() {
    auto* grid = Group("Electrode Potential", "Potential", 2);
    Field(grid, 0, First, names_.before, {{B::Before, "mV"}});
    Field(grid, 1, First, names_.after, {{B::After, "mV"}});
    Field(grid, 1, Second, "Sample Temperature", {{B::SampleCelsius, "°C"}, {B::SampleFahrenheit, "°F"}});
    auto* row = new QHBoxLayout;
    const char* const captions[] = {"Keyboard Input", "On Line Reading"};
    for (int i = 0; i < 2; ++i) {
        auto* tick = Named(new QCheckBox(QString::fromLatin1(captions[i])), names_.tick, i);
        tick->setFont(letters_);
        connect(tick, &QCheckBox::clicked, this, [this, i](bool on) { presenter_.Tick(i, on); });
        row->addWidget(tick);
        row->addSpacing(20);
        ticks_[static_cast<std::size_t>(i)] = tick;
    }
    ticks_[1]->setToolTip(tr("Reads both potentials from the interface. Untick and tick it again to read once more."));
    row->addStretch();
    grid->addLayout(row, 0, Second + 1, 1, Columns - Second - 1);
}

void frmAddition::PinToFoot(QWidget* group) {
    // Below what scrolls: the result and its comment are in sight at any size of the window.
    Body()->removeWidget(group);
    auto* outer = static_cast<QVBoxLayout*>(layout());
    auto* foot = new QVBoxLayout;
    foot->setContentsMargins(Margins.left(), Margins.top() / 2, Margins.right(), Margins.bottom());
    foot->addWidget(group);
    outer->insertLayout(outer->indexOf(findChild<QLabel*>(QStringLiteral("statusRemark"))), foot);
}

void frmAddition::BuildResult() {
    constexpr const char* text = "Actual Sample Concentration";
    auto* grid = Group("Result", "FramResult", 2);
    PinToFoot(grid->parentWidget());
    Boxes(grid, 0, First + 1, text, {{B::ResultPpm, "ppm"}, {B::ResultMolar, "mol/L"}});
    auto* caption = Named(Caption(text, BoxAt(B::ResultPpm)), names_.result);
    caption->setWordWrap(true);
    grid->addWidget(caption, 0, First);
    QFont large = letters_;
    large.setPointSizeF(font().pointSizeF() * ResultGrowth);
    large.setWeight(QFont::DemiBold);
    for (const int box : {B::ResultPpm, B::ResultMolar}) {
        BoxAt(box)->setFont(large);
        BoxAt(box)->setMinimumHeight(QFontMetrics(large).height() + RoomAround);
    }

    comment_ = Named(new QLabel, names_.comment);
    comment_->setAccessibleName(QStringLiteral("Comment"));
    QFont words = letters_;
    words.setWeight(QFont::DemiBold);
    comment_->setFont(words);
    comment_->setWordWrap(true);
    comment_->setMinimumHeight(2 * QFontMetrics(words).lineSpacing());
    grid->addWidget(Caption("Comment", nullptr), 1, First);
    grid->addWidget(comment_, 1, First + 1, 1, Second);

    const std::array<const char*, 2> captions = {"&Calculate", "Re-do"};
    auto* column = new QVBoxLayout;
    for (int i = 0; i < 2; ++i) {
        const auto at = static_cast<std::size_t>(i);
        auto* button = Named(new QPushButton(QString::fromLatin1(captions[at])), names_.button, i);
        button->setAutoDefault(true);
        button->setFont(letters_);
        binder_.BindButton(i, button);
        column->addWidget(button);
        buttons_[at] = button;
    }
    buttons_[B::CalculateButton]->setDefault(true);
    buttons_[B::RedoButton]->setToolTip(
        tr("This button has no effect. Change a box, press Enter in it, then press Calculate."));
    grid->addLayout(column, 0, Second + 3, 2, 1);
    // This group has columns of its own; only its captions stand under the others.
    grids_.pop_back();
    grid->setColumnMinimumWidth(First, firstWidth_);
    for (const int box : {First + 1, Second})
        grid->setColumnStretch(box, 2);
    grid->setColumnStretch(Second + 2, 1);
}

void frmAddition::Arrange() {
    // One width for the captions of each place and for the units, so that the boxes of all groups stand in columns.
    const QFontMetrics metrics(letters_);
    const int unit = metrics.horizontalAdvance(QStringLiteral("mV/dec"));
    const std::array<int, Columns> widths = {firstWidth_, 0,
                                             unit,        secondWidth_,
                                             0,           metrics.horizontalAdvance(QStringLiteral("ppm")),
                                             0,           metrics.horizontalAdvance(QStringLiteral("mol/L"))};
    for (QGridLayout* grid : grids_)
        for (int column = 0; column < Columns; ++column) {
            grid->setColumnMinimumWidth(column, widths[static_cast<std::size_t>(column)]);
            grid->setColumnStretch(column, widths[static_cast<std::size_t>(column)] == 0 ? 1 : 0);
        }
    // In the order of the work; the ion box comes first.
    QWidget* before = cmbIon_;
    for (const int box : {B::SampleMl, B::ExpectedPpm, B::ExpectedMolar, B::ActualMl, B::ActualPpm, B::ActualMolar,
                          B::Slope, B::CaliCelsius, B::CaliFahrenheit}) {
        setTabOrder(before, BoxAt(box));
        before = BoxAt(box);
    }
    for (QWidget* widget : std::initializer_list<QWidget*>{ticks_[0], ticks_[1], BoxAt(B::Before), BoxAt(B::After),
                                                           BoxAt(B::SampleCelsius), BoxAt(B::SampleFahrenheit),
                                                           buttons_[0], buttons_[1], cmbIon_}) {
        if (widget != cmbIon_) setTabOrder(before, widget);
        before = widget;
    }
    auto* status = findChild<QLabel*>(QStringLiteral("statusRemark"));
    status->setMinimumHeight(StatusLines * status->fontMetrics().lineSpacing() + RoomAround);
}

}  // namespace kelvo
