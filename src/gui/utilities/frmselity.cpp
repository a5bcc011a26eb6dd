#include "utilities/frmselity.h"

#include <QtWidgets>

#include "core/IonSettings.h"
#include "kit/EntryBox.h"

namespace kelvo {
namespace {

using S = SelectivityForm;

struct Heading {
    S::Column column;
    const char *box, *first, *second;
};

constexpr Heading Headings[] = {
    {S::Name, "txtion", "Interfering", "Ion"},
    {S::Coefficient, "txtseco", "Selectivity", "Coefficient"},
    {S::TenPercent, "txtcoce", "Concentration for", "10% Interference"},
    {S::Entered, "txtif", "Interfering Ion", "(ppm)"},
    {S::Percent, "txtcf", "Interference", "(%)"},
};

constexpr double AbsentPoints = 8.25;  ///< letters of "must be absent"

}  // namespace

frmselity::frmselity(AppContext& context)
    : frmselity(context, std::make_unique<SelectivityForm>(context.prompts, context.state.Get<IonSettings>().Ions)) {}

frmselity::frmselity(AppContext& context, std::unique_ptr<SelectivityForm> form)
    : CalculatorView(context, ScreenCode::frmselity, {"frmselity", "", "cmbIon", "cmdCancel"}, std::move(form)),
      sums_(static_cast<const SelectivityForm&>(Sums())) {
    setWindowTitle(QStringLiteral("Kelvo : Selectivity  of  Ion - Selective  Measurements"));
    AddConcentration(AddHead(QStringLiteral("Detected  Ion")));
    QGridLayout* grid = AddBlock(QStringLiteral("Selectivity  of  Ion - Selective  Measurements"));
    AddRows(grid);
    AddTotal(grid);
    FinishBody();
    connect(&Binder(), &FormBinder::Shown, this, &frmselity::ShowAbsent);
}

void frmselity::AddConcentration(QHBoxLayout* room) {
    auto* box = Named(Box(S::Concentration, QStringLiteral("Concentration ppm")), "txtC");
    auto* caption = new QLabel(QStringLiteral("Concentration"));
    caption->setBuddy(box);
    room->addWidget(caption);
    room->addWidget(box);
    room->addWidget(new QLabel(QStringLiteral("ppm")));
}

void frmselity::AddRows(QGridLayout* grid) {
    for (const Heading& heading : Headings) {
        const QString first = QString::fromUtf8(heading.first), second = QString::fromUtf8(heading.second);
        auto* label = new QLabel(first + QLatin1Char('\n') + second);
        label->setAlignment(Qt::AlignHCenter | Qt::AlignBottom);
        grid->addWidget(label, 0, heading.column);
        grid->setColumnStretch(heading.column, 1);
    }
    for (int row = 0; row < S::RowCount; ++row) {
        grid->setRowStretch(row + 1, 1);
        for (const Heading& heading : Headings) {
            const QString name = QStringLiteral("%1 %2 %3").arg(heading.first, heading.second).arg(row + 1);
            auto* box = Named(Box(S::Cell(heading.column, row), name), heading.box, row);
            box->setMaximumWidth(QWIDGETSIZE_MAX);
            grid->addWidget(box, row + 1, heading.column, Qt::AlignVCenter);
            if (heading.column == S::Name) box->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
            if (heading.column == S::Coefficient) coefficients_[static_cast<std::size_t>(row)] = box;
        }
    }
}

void frmselity::AddTotal(QGridLayout* grid) {
    constexpr int row = S::RowCount + 1;
    auto* box = Named(Box(S::Total, QStringLiteral("Total Interference %")), "txtsum");
    box->setMaximumWidth(QWIDGETSIZE_MAX);
    auto* caption = new QLabel(QStringLiteral("Total Interference"));
    caption->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(caption, row, S::TenPercent, 1, 2);
    grid->addWidget(box, row, S::Percent, Qt::AlignVCenter);
    grid->addWidget(new QLabel(QStringLiteral("%")), row, S::ColumnCount);
    grid->setRowStretch(row, 1);
}

void frmselity::ShowAbsent() {
    for (int row = 0; row < S::RowCount; ++row) {
        EntryBox* box = coefficients_[static_cast<std::size_t>(row)];
        QFont letters = Letters();
        if (sums_.MustBeAbsent(row)) letters.setPointSizeF(AbsentPoints);
        if (box->font() != letters) box->setFont(letters);
    }
}

}  // namespace kelvo
