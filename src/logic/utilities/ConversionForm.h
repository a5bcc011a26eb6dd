#pragma once

#include "utilities/CalculatorForm.h"

namespace kelvo {

/// Conversion of concentration units and calculation of dilution factors (`frmcnvs`), boxes `txtv(0)` to
/// `txtv(12)`. The chosen ion's weight links ppm and mol/L; every step reads the rounded texts of the boxes.
///
/// 100 ppm of Ca are 2.495E-3 mol/L, LogC -2.603; 100 mL of 10 ppm from 1000 ppm take 1.000 mL of the standard.
class ConversionForm : public CalculatorForm {
 public:
    enum Box {
        Ppm,          ///< mg/L
        Molar,        ///< mol/L
        Density,      ///< g/mL
        PpmByWeight,  ///< mg/kg, computed
        MgPer100g,    ///< computed
        Volume,       ///< mL of solution wanted
        WantedPpm,    ///< its concentration
        WantedMolar,
        StandardPpm,  ///< concentration of the standard at hand
        StandardMolar,
        StandardVolume,  ///< mL of standard to dilute, computed
        FinalVolume,     ///< mL to dilute it to, computed
        LogC,            ///< log10 of mol/L, computed; "Refresh" keeps it
        BoxCount
    };

    ConversionForm(Prompts& prompts, const IonTable& ions);

    void Enter(int i) override;
    std::string StatusMessage() const override;

 private:
    void IonChosen() override;
    void Refresh() override;

    void FromPpm();
    void FromMolar();
    void DensityWhenKnown();
    void DensityPath();
    void FromVolume();
    void FromWantedPpm();
    void FromWantedMolar();
    void FromStandardPpm();
    void FromStandardMolar();
    void DilutionTest();
    void DilutionResult();
    bool StandardTooWeak() const;

    static const std::vector<Dependency> Dependencies;
    static const std::vector<Rule<ConversionForm>> Rules;
};

}  // namespace kelvo
