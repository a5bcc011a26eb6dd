#pragma once

#include <QTimer>
#include <array>

#include "kit/Screen.h"
#include "ph/BufferForm.h"

class QLabel;
class QPushButton;

namespace kelvo {

class EntryBox;
class FormBinder;

/// Takes one buffer of a pH calibration. `BufferForm` decides; the setup shows it once for each buffer.
class frmPset : public Screen {
    Q_OBJECT
 public:
    explicit frmPset(AppContext& context);
    void OnLoad() override;
    void OnActivate() override;
    void OnUnload() override { Timer1_.stop(); }
    /// The tick of `Timer1`; a test calls it.
    void Tick();

 protected:
    void OnEscape() override { Cancel(); }

 private:
    QWidget* Boxes();
    void BuildMenu();
    void ShowForm();
    void Ok();
    void Cancel();

    BufferForm form_;
    FormBinder* binder_;
    QTimer Timer1_;
    std::array<EntryBox*, 4> txtph_{};
    QLabel *prompt_ = nullptr, *default_ = nullptr;
    QPushButton *ok_ = nullptr, *cancel_ = nullptr;
};

}  // namespace kelvo
