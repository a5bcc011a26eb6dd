#include "calibration/fmISEcliSample.h"

#include <QtWidgets>

#include "kit/EntryBox.h"
#include "kit/Screen.h"

namespace kelvo {
namespace {

constexpr std::array<const char*, 12> Captions = {
    "E", " mV", " LogC ", "C", " mol/L", "C", " ppm", "pH", "°C", "Calibration Temperature", "°C", "Sample"};
constexpr std::array<const char*, 7> Spoken = {"Sample potential in mV",
                                               "Sample LogC",
                                               "Sample concentration in mol/L",
                                               "Sample concentration in ppm",
                                               "Sample pH",
                                               "Sample temperature in degrees Celsius",
                                               "Calibration temperature in degrees Celsius"};
constexpr int None = -1, Title = 11;

}  // namespace

SampleBoxes::SampleBoxes(QWidget* parent) : QGroupBox(parent) {
    setObjectName(QStringLiteral("FramSample"));
    for (int i = 0; i < 12; ++i) {
        const auto at = static_cast<std::size_t>(i);
        LabelL_[at] = Named(new QLabel(QString::fromUtf8(Captions[at])), "LabelL", i);
    }
    for (int i = 0; i < 7; ++i) {
        const auto at = static_cast<std::size_t>(i);
        txtT_[at] = Named(EntryBox::Number(), "txtT", i);
        txtT_[at]->setAccessibleName(QString::fromUtf8(Spoken[at]));
    }
    for (const std::size_t computed : {1, 2, 3, 6})
        txtT_[computed]->SetComputed(true);
    txtT_[4]->SetFilter([](char32_t c) { return c >= 32; });
    LabelL_[9]->setWordWrap(true);

    auto* grid = new QGridLayout(this);
    grid->setColumnStretch(1, 1);
    grid->setVerticalSpacing(4);
    grid->addWidget(LabelL_[Title], 0, 0, 1, 3);
    AddRow(grid, 1, 0, 0, 1);
    AddRow(grid, 2, 2, 1, None);
    AddRow(grid, 3, 3, 2, 4);
    AddRow(grid, 4, 5, 3, 6);
    AddRow(grid, 5, 7, 4, None);
    AddRow(grid, 6, None, 5, 8);
    AddRow(grid, 7, 9, 6, 10);

    connect(txtT_[0], &EntryBox::Entered, this, &SampleBoxes::PotentialEntered);
    connect(txtT_[4], &EntryBox::Entered, this, [this] { txtT_[5]->setFocus(Qt::TabFocusReason); });
    connect(txtT_[5], &EntryBox::Entered, this, [this] { txtT_[0]->setFocus(Qt::TabFocusReason); });
}

void SampleBoxes::AddRow(QGridLayout* grid, int row, int left, int box, int unit) {
    EntryBox* entry = Box(box);
    if (left != None) {
        QLabel* label = LabelL_[static_cast<std::size_t>(left)];
        label->setBuddy(entry);
        grid->addWidget(label, row, 0);
    }
    grid->addWidget(entry, row, 1);
    if (unit != None) grid->addWidget(LabelL_[static_cast<std::size_t>(unit)], row, 2);
}

void SampleBoxes::Show(bool shown) {
    for (QLabel* label : LabelL_)
        label->setVisible(shown);
    for (EntryBox* box : txtT_)
        box->setVisible(shown);
    setVisible(shown);
}

void SampleBoxes::Empty() {
    for (EntryBox* box : txtT_)
        box->SetText(std::string());
}

void SampleBoxes::SetText(int i, const std::string& text) {
    Box(i)->SetText(text);
}

std::array<std::string, 7> SampleBoxes::Texts() const {
    std::array<std::string, 7> texts;
    for (std::size_t i = 0; i < texts.size(); ++i)
        texts[i] = txtT_[i]->Text();
    return texts;
}

void SampleBoxes::SetResult(const SampleResult& result) {
    SetText(1, result.LogCText);
    SetText(2, result.MolarText);
    SetText(3, result.PpmText);
}

}  // namespace kelvo
