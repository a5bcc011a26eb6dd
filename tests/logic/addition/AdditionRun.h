#pragma once

#include <algorithm>
#include <cctype>
#include <sstream>
#include <string>

#include "addition/AdditionForm.h"
#include "app/AppState.h"
#include "support/Scripted.h"

namespace kelvo::test {

/// Prompts that write down what is said, joined by '|', a question with "? " before it. Every question is answered
/// with `yes`.
class NotingPrompts : public Prompts {
 public:
    void Message(const std::string& text, const std::string&, Icon icon) override {
        Note((icon == Icon::Exclamation ? "! " : "") + text);
    }
    bool Ask(const std::string& text, bool, const std::string&) override {
        Note("(Escape is No) " + text);
        return yes;
    }
    bool AskToSave(const std::string& text, const std::string&) override {
        Note("? " + text);
        return yes;
    }
    std::optional<std::string> Input(const std::string&, const std::string&, const std::string&) override {
        ADD_FAILURE() << "nothing is to be typed";
        return std::nullopt;
    }
    std::string heard;
    bool yes = false;

 private:
    void Note(const std::string& text) { heard += (heard.empty() ? "" : "|") + text; }
};

/// One addition form, loaded on a state with fluoride at −58.00 mV per decade, 25 °C, after these steps.
struct AdditionRun : private AdditionClient {
    explicit AdditionRun(const AdditionMethod& method, const std::string& steps = {})
        : form(state, prompts, clock, method, *this) {
        state.IonIndex = Fluoride;
        state.CaliSlope = -58;
        state.FileTemp = "25";
        state.FileDate = "23/11/2026 10:00";
        form.Load();
        Perform(steps);
    }

    /// What the analyst does, in words: "0=50" edits box 0 ("3=" empties it), "0!" is Enter in it, "0=50!" both;
    /// "9?" puts the pointer into box 9; "F" chooses an ion, "calc" and "redo" are the buttons, "key" and "enter" keys
    /// in the ion box, "new" the menu item.
    void Perform(const std::string& steps) {
        std::istringstream words(steps);
        for (std::string word; words >> word;) {
            const char last = word.back();
            if (last == '!' || last == '?') word.pop_back();
            const auto equals = word.find('=');
            if (word == "calc" || word == "redo") {
                form.Press(word == "calc" ? AdditionForm::CalculateButton : AdditionForm::RedoButton);
            } else if (word == "key" || word == "enter") {
                form.KeyInIonBox(word == "enter");
            } else if (word == "new") {
                form.New();
            } else if (std::isdigit(static_cast<unsigned char>(word[0])) == 0) {
                form.Select(AdditionForm::IonList, IonOf(word));
            } else if (equals != std::string::npos) {
                form.Edited(std::stoi(word), word.substr(equals + 1));
            }
            if (last == '!') form.Enter(std::stoi(word));
            if (last == '?') form.Clicked(std::stoi(word));
        }
    }

    /// The boxes named in "3 4 5" as "3=20 4=1.05E-3 5=_5": a blank is shown as '_'.
    std::string Shown(const std::string& boxes) const {
        std::istringstream words(boxes);
        std::string shown;
        for (int box; words >> box;) {
            std::string text = form.Text(box);
            std::replace(text.begin(), text.end(), ' ', '_');
            shown += (shown.empty() ? "" : " ") + std::to_string(box) + "=" + text;
        }
        return shown;
    }
    /// Box where the focus goes, "calc" for the button, empty when it stays; behind it the yellow box.
    std::string Led() {
        const int focus = form.TakeFocus();
        std::string led = focus == FormModel::NoFocus       ? ""
                          : focus >= FormModel::FirstButton ? "calc"
                                                            : std::to_string(focus);
        for (int i = 0; i < form.Size(); ++i)
            if (form.At(i).nextField) led += " yellow " + std::to_string(i);
        return led;
    }
    int IonOf(const std::string& name) const {
        if (name == "none") return NoIon;
        for (int i = 0; i < IonRows; ++i)
            if (state.Ions.names[static_cast<std::size_t>(i)] == name) return i;
        ADD_FAILURE() << "no such ion: " << name;
        return 0;
    }

    static constexpr int Fluoride = 10;
    AppState state;
    NotingPrompts prompts;
    FixedClock clock;
    std::string asked;  ///< what the form asked of its screen
    AdditionForm form;

 private:
    void CalibrateFirst() override { asked += "calibrate "; }
    void ShowNow() override { asked += "show "; }
    void SaveRow() override { asked += "save "; }
};

}  // namespace kelvo::test
