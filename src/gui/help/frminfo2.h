#pragma once

#include "help/HelpSheet.h"
#include "kit/Screen.h"

namespace kelvo {

class IllustrationView;
class PageButton;
class ReadingView;

/// The second help sheet: the lines that do not fit on the first.
class frminfo2 : public Screen {
    Q_OBJECT
 public:
    explicit frminfo2(AppContext& context);
    void OnLoad() override;

 protected:
    void OnEscape() override;

 private:
    HelpSheet sheet_;
    ReadingView* reading_ = nullptr;
    IllustrationView* picture_ = nullptr;
    PageButton* Image1_ = nullptr;
};

}  // namespace kelvo
