#pragma once

#include <algorithm>
#include <array>
#include <initializer_list>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "app/AppState.h"
#include "support/Scripted.h"
#include "utilities/CalculatorForm.h"

namespace kelvo::test {

/// Prompts that write down what is said: "text" or "[title] text", joined by '|'. A calculator asks nothing.
class Listener : public ScriptedPrompts {
 public:
    void Message(const std::string& text, const std::string& title, Icon) override {
        if (!heard.empty()) heard += "|";
        if (!title.empty()) heard += "[" + title + "] ";
        heard += text;
    }
    std::string heard;
};

/// One row of a calculator's test: what the analyst does, what the boxes then show, what has been said, and where
/// the focus has gone last.
///
/// Doings are words: an ion's name chooses it, "3=120" edits box 3, "3=" empties it, "3!" is Enter in box 3,
/// "3=120!" is both, "refresh" is the button. Shown are words "3=120"; "3=" is an empty box, '_' stands for a blank.
/// The focus is a box number, "list", or "" when it has not been moved.
struct CalculatorCase {
    std::string name, doings, shown, said, focus;
};

inline int IonOf(const IonTable& ions, const std::string& name) {
    for (int i = 0; i < CalculatorForm::IonCount; ++i)
        if (ions.names[static_cast<std::size_t>(i)] == name) return i;
    ADD_FAILURE() << "no such ion: " << name;
    return 0;
}

/// @return where the last doing sent the focus
inline std::string Perform(CalculatorForm& form, const IonTable& ions, const std::string& doings) {
    std::istringstream words(doings);
    int focus = FormModel::NoFocus;
    for (std::string word; words >> word;) {
        const bool enter = word.back() == '!';
        if (enter) word.pop_back();
        const auto equals = word.find('=');
        if (word == "refresh") {
            form.Press(CalculatorForm::RefreshButton);
        } else if (std::isdigit(static_cast<unsigned char>(word[0])) == 0) {
            form.Select(CalculatorForm::IonList, IonOf(ions, word));
        } else if (equals != std::string::npos) {
            form.Edited(std::stoi(word), word.substr(equals + 1));
        }
        if (enter) form.Enter(std::stoi(word));
        focus = form.TakeFocus();
    }
    if (focus == FormModel::NoFocus) return "";
    return focus >= FormModel::FirstList ? "list" : std::to_string(focus);
}

template <typename SheetType>
void RunCases(std::initializer_list<CalculatorCase> rows) {
    const AppState state;
    for (const CalculatorCase& row : rows) {
        SCOPED_TRACE(row.name);
        Listener listener;
        SheetType form(listener, state.Ions);
        EXPECT_EQ(Perform(form, state.Ions, row.doings), row.focus);
        std::istringstream words(row.shown);
        for (std::string word; words >> word;) {
            std::string text = form.Text(std::stoi(word));
            std::replace(text.begin(), text.end(), ' ', '_');
            EXPECT_EQ(text, word.substr(word.find('=') + 1)) << word;
        }
        EXPECT_EQ(listener.heard, row.said);
    }
}

/// What the form says quietly after doings: empty, or a text that begins so.
template <typename FormType>
void RunStatusCases(std::initializer_list<std::pair<std::string, std::string>> rows) {
    const AppState state;
    for (const auto& [doings, status] : rows) {
        Listener listener;
        FormType form(listener, state.Ions);
        Perform(form, state.Ions, doings);
        const std::string said = form.StatusMessage();
        EXPECT_TRUE(status.empty() ? said.empty() : said.starts_with(status)) << doings << ": " << said;
    }
}

/// Every box order up to length 3 × pair of entries, the ions in turn, so that each meets every order: no exception
/// leaves the form, no box shows "inf" or "nan", an emptied box takes what depends on it along. One order in three then
/// meets another ion.
/// @param dependants  by box to enter: those that must be empty once it has been emptied
template <typename SheetType>
void RunEveryOrder(const std::map<int, std::vector<int>>& dependants) {
    // Entries that a filter of digits and dots lets through, from the harmless to the absurd.
    const std::array<std::string, 6> entries = {
        "0", "1", "24046.8", ".", std::string(1000, '9'), "0." + std::string(400, '0') + "1"};
    const AppState state;
    std::vector<int> boxes;
    for (const auto& row : dependants)
        boxes.push_back(row.first);
    const std::size_t n = boxes.size(), orders = n * n * n, pairs = entries.size() * entries.size();
    Listener listener;
    for (std::size_t i = 0; i < orders * pairs; ++i) {
        const std::size_t order = i / pairs, a = i % entries.size(), b = i % pairs / entries.size();
        const int ion = static_cast<int>((order + i) % CalculatorForm::IonCount);
        const std::array<int, 3> path = {boxes[order % n], boxes[order / n % n], boxes[order / n / n]};
        const std::array<std::size_t, 3> picks = {a, b, (a + b) % entries.size()};
        const auto doing = [&] {
            return state.Ions.names[static_cast<std::size_t>(ion)] + " boxes " + testing::PrintToString(path) +
                   " entries " + testing::PrintToString(picks);
        };
        listener.heard.clear();
        SheetType form(listener, state.Ions);
        ASSERT_NO_THROW({
            form.Select(CalculatorForm::IonList, ion);
            for (std::size_t step = 0; step < 3; ++step) {
                if (!form.At(path[step]).enabled) continue;
                form.Edited(path[step], entries[picks[step]]);
                form.Enter(path[step]);
            }
            if ((order + i) % 3 == 0) form.Select(CalculatorForm::IonList, (ion + 7) % CalculatorForm::IonCount);
        }) << doing();
        for (int box = 0; box < form.Size(); ++box)
            for (const char* numberless : {"inf", "nan"})
                ASSERT_EQ(form.Text(box).find(numberless), std::string::npos) << "box " << box << " after " << doing();
        for (const int box : path) {
            if (form.Text(box).empty()) continue;
            form.Edited(box, "");
            for (const int dependant : dependants.at(box))
                ASSERT_EQ(form.Text(dependant), "") << "box " << dependant << " after " << doing();
        }
    }
}

}  // namespace kelvo::test
