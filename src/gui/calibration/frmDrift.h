#pragma once

#include <array>

#include "calibration/DriftCheck.h"
#include "kit/Screen.h"

class QCheckBox;

namespace kelvo {

class EntryBox;

/// "Drift Checks": after how many samples or minutes a standard is measured again, how far it may have moved, and
/// whether samples between two good checks are corrected.
class frmDrift : public Screen {
    Q_OBJECT
 public:
    explicit frmDrift(AppContext& context);
    void OnLoad() override;

 protected:
    void OnEscape() override;

 private:
    void Ok();

    DriftSettings settings_;
    std::array<EntryBox*, DriftSettings::Numbers> boxes_{};
    QCheckBox* bracket_ = nullptr;
};

}  // namespace kelvo
