#include "utilities/frmcnvs.h"

#include <QtWidgets>

#include "core/IonSettings.h"
#include "utilities/ConversionForm.h"

namespace kelvo {
namespace {

using S = ConversionForm;

constexpr int Places = 3;

struct Field {
    int row, place;  ///< place 0 to 2 from left to right: the sum is read that way
    int box;
    const char *caption, *unit, *accessibleName;
};

constexpr Field Conversion[] = {
    {0, 0, S::Ppm, "mg/L", "ppm(wt/vol)", "mg/L ppm(wt/vol)"},
    {0, 1, S::Molar, "Molarity", "mol/L", "Molarity mol/L"},
    {0, 2, S::LogC, "LogC", "", "LogC"},
    {1, 0, S::Density, "Density of Solution", "g/mL", "Density of Solution g/mL"},
    {1, 1, S::PpmByWeight, "mg/kg", "ppm(wt/wt)", "mg/kg ppm(wt/wt)"},
    {1, 2, S::MgPer100g, "mg/100g", "mg%(wt/wt)", "mg/100g mg%(wt/wt)"},
};

constexpr Field Dilution[] = {
    {0, 0, S::Volume, "To prepare", "mL", "To prepare mL"},
    {0, 1, S::WantedPpm, "of", "ppm", "of ppm Solution"},
    {0, 2, S::WantedMolar, "", "mol/L Solution", "of mol/L Solution"},
    {1, 1, S::StandardPpm, "from", "ppm", "from ppm Standard"},
    {1, 2, S::StandardMolar, "", "mol/LStandard", "from mol/L Standard"},
    {2, 0, S::StandardVolume, "Dilute", "mL Standard", "Dilute mL Standard"},
    {2, 1, S::FinalVolume, "to", "mL  Solution", "to mL Solution"},
};

/// Width of a caption of two words, and of a longer one in several lines.
int WrappedWidth(const QString& caption, const QFontMetrics& letters) {
    const QStringList words = caption.split(QLatin1Char(' '));
    if (words.size() <= 2) return letters.horizontalAdvance(caption) + 1;
    int widest = 0;
    for (const QString& word : words)
        widest = std::max(widest, letters.horizontalAdvance(word) + 1);
    return widest;
}

}  // namespace

frmcnvs::frmcnvs(AppContext& context)
    : CalculatorView(context, ScreenCode::frmcnvs, {"frmcnvs", "txtv", "cmbcvt", "cmdcancel"},
                     std::make_unique<ConversionForm>(context.prompts, context.state.Get<IonSettings>().Ions)) {
    setWindowTitle(QStringLiteral("Kelvo : Conversion of Concentration Units"));
    AddHead(QStringLiteral("Ion"));

    QGridLayout* blocks[] = {AddBlock(QStringLiteral("Conversion of Concentration Units")),
                             AddBlock(QStringLiteral("Calculation of Dilution Factors"))};
    // The columns of the two blocks stand under each other.
    const QFontMetrics letters(Letters());
    int captions[Places] = {}, units[Places] = {};
    const auto lay = [&](QGridLayout* grid, std::span<const Field> fields) {
        for (const Field& field : fields) {
            const QString caption = QString::fromUtf8(field.caption), unit = QString::fromUtf8(field.unit);
            AddField(grid, field.row, field.place, field.box, caption, unit, QString::fromUtf8(field.accessibleName));
            captions[field.place] = std::max(captions[field.place], WrappedWidth(caption, letters));
            units[field.place] = std::max(units[field.place], letters.horizontalAdvance(unit));
        }
    };
    lay(blocks[0], Conversion);
    lay(blocks[1], Dilution);
    for (QGridLayout* grid : blocks)
        for (int place = 0; place < Places; ++place)
            AlignField(grid, place, captions[place], units[place]);
    FinishBody();
}

}  // namespace kelvo
