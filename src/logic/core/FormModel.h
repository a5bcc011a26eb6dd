#pragma once

#include <string>
#include <vector>

namespace kelvo {

class Prompts;

/// A form full of linked boxes as a plain object: the texts with their state, and methods named for what the
/// analyst does. It knows no widget; one binder (gui/kit/FormBinder.h) ties any form model to real ones, hands the
/// analyst's doings in and shows what came back. Limits, masks and messages are rows of tables in the form.
class FormModel {
 public:
    struct Box {
        std::string text;
        bool nextField = false;  ///< yellow: the box to fill next
        bool enabled = true;
        bool visible = true;
        bool readOnly = false;  ///< computed: shown flat, not typed into
    };

    /// Where the focus is to go: boxes count from 0, buttons from `FirstButton`, lists from `FirstList`.
    static constexpr int NoFocus = -1, FirstButton = 1000, FirstList = 2000;

    FormModel(int boxes, Prompts& prompts) : prompts_(prompts), boxes_(static_cast<std::size_t>(boxes)) {}
    virtual ~FormModel() = default;
    FormModel(const FormModel&) = delete;
    FormModel& operator=(const FormModel&) = delete;

    int Size() const { return static_cast<int>(boxes_.size()); }
    const Box& At(int i) const { return boxes_.at(static_cast<std::size_t>(i)); }
    const std::string& Text(int i) const { return At(i).text; }

    /// The analyst has edited box i: its text is now this. An emptied box empties what depends on it.
    void Edited(int i, std::string text);

    /// Enter in box i. Shows the step's messages, fills what follows, says where the focus goes.
    virtual void Enter(int i) = 0;
    /// Box i has been left for another one by the pointer or Tab.
    virtual void Left(int) {}
    /// Box i has just become empty.
    virtual void Emptied(int) {}
    /// The pointer has been put into box i.
    virtual void Clicked(int) {}
    /// Row `row` of list `list` has been chosen.
    virtual void Select(int /*list*/, int /*row*/) {}
    /// Row that list `list` shows, -1 none. The binder keeps the widget to it.
    virtual int Selected(int /*list*/) const { return -1; }
    /// Button `button` has been pressed.
    virtual void Press(int /*button*/) {}
    /// Whether a character may be typed into box i.
    virtual bool KeyAllowed(int i, char32_t key) const = 0;
    /// Whether a character outside the filter stays in the box all the same and is only told.
    virtual bool KeepsRefusedKeys() const { return false; }
    /// A character was refused: shows the message of box i.
    virtual void KeyRefused(int i) = 0;

    /// Takes the wish for the focus, once: an index as above, or NoFocus when it stays.
    int TakeFocus();

 protected:
    Box& Mutable(int i) { return boxes_.at(static_cast<std::size_t>(i)); }
    void Set(int i, std::string text) { Mutable(i).text = std::move(text); }
    void FocusOn(int target) { focus_ = target; }
    /// The yellow lead goes to box i alone; NoFocus takes it away.
    void SetNextField(int i);
    Prompts& prompts_;

 private:
    std::vector<Box> boxes_;
    int focus_ = NoFocus;
};

}  // namespace kelvo
