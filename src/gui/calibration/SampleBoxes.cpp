#include "calibration/SampleBoxes.h"

#include <QtWidgets>
#include <utility>

#include "kit/EntryBox.h"
#include "kit/FormBinder.h"
#include "kit/Screen.h"

namespace kelvo {
namespace {

constexpr std::array<const char*, 12> Captions = {
    "E", " mV", " LogC ", "C", " mol/L", "C", " ppm", "pH", "°C", "Calibration Temperature", "°C", "Sample"};
constexpr std::array<const char*, SampleForm::Boxes> Spoken = {"Sample potential in mV",
                                                               "Sample LogC",
                                                               "Sample concentration in mol/L",
                                                               "Sample concentration in ppm",
                                                               "Sample pH",
                                                               "Sample temperature in degrees Celsius",
                                                               "Calibration temperature in degrees Celsius"};
constexpr int None = -1, Title = 11;

}  // namespace

SampleBoxes::SampleBoxes(SampleForm& form, QWidget* parent)
    : QGroupBox(parent), form_(form), binder_(new FormBinder(form, this)) {
    setObjectName(QStringLiteral("FramSample"));
    for (int i = 0; i < 12; ++i) {
        const auto at = static_cast<std::size_t>(i);
        LabelL_[at] = Named(new QLabel(QString::fromUtf8(Captions[at])), "LabelL", i);
    }
    LabelL_[9]->setWordWrap(true);
    for (int i = 0; i < SampleForm::Boxes; ++i) {
        const auto at = static_cast<std::size_t>(i);
        txtT_[at] = Named(EntryBox::Number(), "txtT", i);
        txtT_[at]->setAccessibleName(QString::fromUtf8(Spoken[at]));
        binder_->Bind(i, txtT_[at]);
        if (!form.At(i).readOnly) txtT_[at]->setMaxLength(EntryBox::NumberLength);
    }
    // A potential that has been taken gives way to the next one typed.
    EntryBox* potential = txtT_[SampleForm::Potential];
    connect(potential, &EntryBox::Entered, potential, &QLineEdit::selectAll);

    auto* grid = new QGridLayout(this);
    grid->setColumnStretch(1, 1);
    grid->setVerticalSpacing(4);
    grid->addWidget(LabelL_[Title], 0, 0, 1, 3);
    AddRow(grid, 1, 0, SampleForm::Potential, 1);
    AddRow(grid, 2, 2, SampleForm::LogC, None);
    AddRow(grid, 3, 3, SampleForm::Molar, 4);
    AddRow(grid, 4, 5, SampleForm::Ppm, 6);
    AddRow(grid, 5, 7, SampleForm::Ph, None);
    AddRow(grid, 6, None, SampleForm::Celsius, 8);
    AddRow(grid, 7, 9, SampleForm::CaliCelsius, 10);
    lblNext_ = Named(new QLabel, "lblNext");
    lblNext_->setAccessibleName(tr("List of samples"));
    lblInterval_ = Named(new QLabel, "lblInterval");
    lblInterval_->setAccessibleName(tr("Uncertainty of the sample"));
    lblLive_ = Named(new QLabel, "lblLive");
    lblLive_->setAccessibleName(tr("Live concentration with its uncertainty"));
    int row = 8;
    for (QLabel* label : {lblNext_, lblInterval_, lblLive_}) {
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
        grid->addWidget(label, row++, 0, 1, 3);
    }
}

void SampleBoxes::AddRow(QGridLayout* grid, int row, int left, int box, int unit) {
    EntryBox* entry = txtT_[static_cast<std::size_t>(box)];
    if (left != None) {
        QLabel* label = LabelL_[static_cast<std::size_t>(left)];
        label->setBuddy(entry);
        grid->addWidget(label, row, 0);
    }
    grid->addWidget(entry, row, 1);
    if (unit != None) grid->addWidget(LabelL_[static_cast<std::size_t>(unit)], row, 2);
}

void SampleBoxes::ShowForm() {
    for (QLabel* label : LabelL_)
        label->setVisible(form_.Shown());
    const auto showLine = [](QLabel* label, const std::string& line) {
        label->setText(ToQt(line));
        label->setVisible(!line.empty());
    };
    showLine(lblNext_, form_.NextSample());
    showLine(lblInterval_, form_.IntervalLine());
    const std::string basis = form_.IntervalBasis();
    lblInterval_->setToolTip(basis.empty() ? QString() : tr("The interval holds: %1").arg(ToQt(basis)));
    showLine(lblLive_, form_.LiveLine());
    setVisible(form_.Shown());
    binder_->WriteBack();
    const int colour = form_.TemperatureColour();
    if (std::exchange(colour_, colour) == colour) return;
    txtT_[SampleForm::Celsius]->SetBackground(colour == SampleForm::NoColour ? -1 : colour);
}

}  // namespace kelvo
