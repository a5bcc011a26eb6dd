#include "utilities/frmacft.h"

#include <QtWidgets>

#include "core/IonSettings.h"
#include "utilities/ActivityForm.h"

namespace kelvo {
namespace {

using S = ActivityForm;

constexpr const char* Explanation =
    "An ion-selective electrode determines the activity of an ion in solution. To calculate the concentration, the "
    "measured activity must be divided by the activity coefficient. The coefficient depends on the ionic strength of "
    "the solution, up to 0.6 mol/L, and on the charge and size of the ion.";

struct Group {
    const char* caption;
    int ppm, molar;  ///< boxes; a group of one box has no ppm
};

/// Two rows of two: the strength gives the coefficient, the activity by the coefficient the concentration.
constexpr Group Groups[2][2] = {
    {{"  Ionic   Strength", S::StrengthPpm, S::StrengthMolar}, {" Activity  Coefficient ", -1, S::Coefficient}},
    {{"Activity", S::ActivityPpm, S::ActivityMolar}, {"Concentration", S::ConcentrationPpm, S::ConcentrationMolar}},
};

}  // namespace

frmacft::frmacft(AppContext& context)
    : CalculatorView(context, ScreenCode::frmacft, {"frmacft", "txtac", "cmbacion", "cmdaccel"},
                     std::make_unique<ActivityForm>(context.prompts, context.state.Get<IonSettings>().Ions)) {
    setWindowTitle(QStringLiteral("Kelvo : Activity Coefficients"));
    AddHead(QStringLiteral("Ion"));

    auto* explanation = Named(new QLabel(QString::fromUtf8(Explanation)), "lblExplanation");
    explanation->setWordWrap(true);
    Body()->addWidget(explanation);
    Body()->addSpacing(4);

    const int unitWidth = QFontMetrics(Letters()).horizontalAdvance(QStringLiteral("mol/L"));
    for (const auto& row : Groups) {
        auto* line = new QHBoxLayout;
        line->setSpacing(14);
        Body()->addLayout(line, 1);
        for (const Group& group : row) {
            const QString caption = QString::fromUtf8(group.caption);
            QGridLayout* grid = AddBlock(caption, line);
            const bool single = group.ppm < 0;
            if (!single) AddField(grid, 0, 0, group.ppm, {}, QStringLiteral("ppm"), caption.simplified() + " ppm");
            AddField(grid, single ? 0 : 1, 0, group.molar, {}, single ? QString() : QStringLiteral("mol/L"),
                     caption.simplified() + (single ? "" : " mol/L"));
            AlignField(grid, 0, 0, unitWidth);
        }
    }
    FinishBody();
}

}  // namespace kelvo
