#pragma once

#include "kit/Screen.h"

class QPushButton;

namespace kelvo {

class EntryBox;

/// Asks for the sample number of the row just added to the data table.
class frmMsg : public Screen {
    Q_OBJECT
 public:
    explicit frmMsg(AppContext& context);
    void OnActivate() override;

 protected:
    void OnEscape() override { Cancel(); }

 private:
    void Ok();
    void Cancel();
    void GoAway();

    EntryBox* Text1_;
};

}  // namespace kelvo
