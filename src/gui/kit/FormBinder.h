#pragma once

#include <QObject>
#include <QPointer>
#include <deque>
#include <functional>
#include <map>

#include "core/FormModel.h"

class QAbstractButton;
class QComboBox;
class QWidget;

namespace kelvo {

class EntryBox;

/// Ties any form model to real widgets: hands in what the analyst does (edits, Enter, refused keys, leaving a box, a
/// row of a list, a button) and, after each of these, shows what came back: texts, enabled, visible, computed,
/// nextField, the rows of the lists and the focus. What it writes itself is no doing of the analyst.
///
/// A model that shows a message runs the event loop; what arrives meanwhile waits until the step has returned.
class FormBinder : public QObject {
    Q_OBJECT
 public:
    /// The model outlives the binder.
    explicit FormBinder(FormModel& form, QObject* parent = nullptr);

    void Bind(int box, EntryBox* widget);
    void BindButton(int button, QAbstractButton* widget);
    /// A list is opened by arrows, letters and the space bar, and a row counts when it has been chosen: on its way
    /// through the rows it would send the focus away at the first. The mouse wheel does not turn it.
    void BindList(int list, QComboBox* widget);

    /// A step of the program itself, a tick's reading say: it waits its turn as those of the analyst do.
    void Perform(std::function<void()> step) { Hand(std::move(step)); }

    /// Shows the form model as it stands. Call it once after binding, and when the host has changed the model itself.
    void WriteBack();

 signals:
    /// The model has been written back.
    void Shown();

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void Hand(std::function<void()> doing);
    void WriteBox(int box, EntryBox& widget);
    void MoveFocus();
    QWidget* Target(int focus) const;

    FormModel& form_;
    std::map<int, QPointer<EntryBox>> boxes_;
    std::map<int, QPointer<QAbstractButton>> buttons_;
    std::map<int, QPointer<QComboBox>> lists_;
    std::deque<std::function<void()>> waiting_;
    bool busy_ = false;     ///< a step is with the model
    bool writing_ = false;  ///< the binder is changing widgets
    bool turned_ = false;   ///< the choice that a list is about to tell has been handed in as a new row
};

}  // namespace kelvo
