#pragma once

#include <memory>

#include "kit/FormBinder.h"
#include "kit/Screen.h"
#include "utilities/CalculatorForm.h"

class QBoxLayout;
class QComboBox;
class QGridLayout;
class QHBoxLayout;
class QPushButton;

namespace kelvo {

class EntryBox;

/// What the screens of the three calculators share, so that they look and act as one family: the menus, the ion box
/// and "Refresh" in the head, the binder, and the way out. A calculator lays its boxes out and no more.
class CalculatorView : public Screen {
    Q_OBJECT
 public:
    void OnLoad() override;
    void OnActivate() override;

 protected:
    struct Names {
        const char* form;
        const char* box;  ///< of the form's boxes; empty when the calculator names them itself
        const char* ionBox;
        const char* refresh;
    };

    CalculatorView(AppContext& context, ScreenCode code, const Names& names, std::unique_ptr<CalculatorForm> form);

    /// Ion box with its caption, room for more, and "Refresh" at the right end; in the body as it is made.
    QHBoxLayout* AddHead(const QString& ionCaption);

    /// A group box with its caption and a grid inside.
    QGridLayout* AddBlock(const QString& caption, QBoxLayout* into = nullptr);
    /// A box tied to box i of the form; computed ones are shown flat and passed over by Tab.
    EntryBox* Box(int i, const QString& accessibleName);
    /// Caption, box and unit: one place of a grid, three of its columns.
    void AddField(QGridLayout* grid, int row, int place, int i, const QString& caption, const QString& unit,
                  const QString& accessibleName);
    /// Widths of the captions and units of a place, and room between it and the next. A longer caption is wrapped.
    void AlignField(QGridLayout* grid, int place, int captionWidth, int unitWidth);
    /// The tab order (ion box, boxes in the order they were made, "Refresh") and the letters.
    void FinishBody();

    const CalculatorForm& Sums() const { return *form_; }
    /// Letters of labels and boxes: a little larger than the desktop's, since they are read at arm's length.
    const QFont& Letters() const { return letters_; }
    const FormBinder& Binder() const { return binder_; }

    void OnEscape() override { GoBack(); }

 private:
    void AddMenus();
    void ShowStatus();
    void GoBack();
    void Exit();

    Names names_;
    QFont letters_;
    std::unique_ptr<CalculatorForm> form_;
    FormBinder binder_;
    QComboBox* ionBox_ = nullptr;
    QPushButton* refresh_ = nullptr;
    std::string status_;            ///< what the form has last said quietly
    std::vector<EntryBox*> boxes_;  ///< in the order they were made
};

}  // namespace kelvo
