#pragma once

#include "utilities/CalculatorForm.h"

namespace kelvo {

/// Activity coefficients (`frmacft`), boxes `txtac(0)` to `txtac(6)`: a measured activity into a concentration and
/// back, by the coefficient of the chosen ion at an ionic strength. Every step reads the rounded texts of the boxes.
///
/// Ca at 0.1 mol/L ionic strength: coefficient 0.439, so an activity of 43.9 ppm is a concentration of 100.000 ppm.
class ActivityForm : public CalculatorForm {
 public:
    enum Box {
        StrengthPpm,
        StrengthMolar,
        Coefficient,  ///< computed
        ActivityPpm,
        ActivityMolar,
        ConcentrationPpm,
        ConcentrationMolar,
        BoxCount
    };

    ActivityForm(Prompts& prompts, const IonTable& ions);

    void Enter(int i) override;
    std::string StatusMessage() const override;

 private:
    void IonChosen() override;
    void Refresh() override;

    void FromStrengthPpm();
    void FromStrengthMolar();
    void FromActivityPpm();
    void FromActivityMolar();
    void FromConcentrationPpm();
    void FromConcentrationMolar();
    void StrengthStep(float strength, bool tooStrong);
    void WriteCoefficient(float strength);
    /// @return whether it ran: boxes of the coefficient and the activity both hold text
    bool ActivityChain();
    void ActivityChainOrSay();

    bool refused_ = false;  ///< the strength entered last, or its ion, was refused

    static const std::vector<Dependency> Dependencies;
    static const std::vector<Rule<ActivityForm>> Rules;
};

}  // namespace kelvo
