#pragma once

#include <gtest/gtest.h>

#include <array>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "core/AppState.h"
#include "utilities/CalculatorSheet.h"

namespace kelvo::test {

/// Prompts that write down what is said: "text" or "[title] text", joined by '|'.
class Listener : public Prompts {
 public:
    void Message(const std::string& text, const std::string& title, Icon) override {
        if (!heard.empty()) heard += "|";
        if (!title.empty()) heard += "[" + title + "] ";
        heard += text;
    }
    bool Ask(const std::string& text, bool, const std::string&) override { return Fail(text); }
    std::optional<std::string> Input(const std::string&, const std::string& prompt, const std::string&) override {
        Fail(prompt);
        return std::nullopt;
    }

    std::string heard;

 private:
    bool Fail(const std::string& text) {
        ADD_FAILURE() << "a calculator asks nothing: " << text;
        return false;
    }
};

/// One row of a calculator's test: what the analyst does, what the boxes then show, what has been said, and where
/// the focus has gone last.
///
/// Doings are words: an ion's name chooses it, "3=120" edits box 3, "3=" empties it, "3!" is Enter in box 3,
/// "3=120!" is both, "refresh" is the button. Shown are words "3=120"; "3=" is an empty box, '_' stands for a blank.
/// The focus is a box number, "list", or "" when it has not been moved.
struct CalculatorCase {
    const char* name;
    const char* doings;
    const char* shown;
    const char* said = "";
    const char* focus = "";
};

inline int IonOf(const IonTable& ions, const std::string& name) {
    for (int i = 0; i < CalculatorSheet::IonCount; ++i)
        if (ions.names[static_cast<std::size_t>(i)] == name) return i;
    ADD_FAILURE() << "no such ion: " << name;
    return 0;
}

inline std::string Unblank(std::string text) {
    for (char& c : text)
        if (c == '_') c = ' ';
    return text;
}

/// @return where the last doing sent the focus
inline std::string Do(CalculatorSheet& sheet, const IonTable& ions, const std::string& doings) {
    std::istringstream words(doings);
    int focus = Sheet::NoFocus;
    for (std::string word; words >> word;) {
        const bool enter = word.back() == '!';
        if (enter) word.pop_back();
        const auto equals = word.find('=');
        if (word == "refresh") {
            sheet.Press(CalculatorSheet::RefreshButton);
        } else if (std::isdigit(static_cast<unsigned char>(word[0])) == 0) {
            sheet.Select(CalculatorSheet::IonList, IonOf(ions, word));
        } else if (equals != std::string::npos) {
            sheet.Edited(std::stoi(word), word.substr(equals + 1));
        }
        if (enter) sheet.Enter(std::stoi(word));
        focus = sheet.TakeFocus();
    }
    if (focus == Sheet::NoFocus) return "";
    return focus >= Sheet::FirstList ? "list" : std::to_string(focus);
}

template <typename SheetType>
void Play(const CalculatorCase& row) {
    SCOPED_TRACE(row.name);
    const AppState state;
    Listener listener;
    SheetType sheet(listener, state.Ions);
    const std::string focus = Do(sheet, state.Ions, row.doings);
    std::istringstream words(row.shown);
    for (std::string word; words >> word;) {
        const int box = std::stoi(word);
        EXPECT_EQ(sheet.Text(box), Unblank(word.substr(word.find('=') + 1))) << "box " << box;
    }
    EXPECT_EQ(listener.heard, row.said);
    EXPECT_EQ(focus, row.focus);
}

inline bool IsNumberless(const std::string& text) {
    return text.find("inf") != std::string::npos || text.find("nan") != std::string::npos;
}

/// Prompts that take everything in silence.
class Deaf : public Prompts {
 public:
    void Message(const std::string&, const std::string&, Icon) override {}
    bool Ask(const std::string&, bool, const std::string&) override { return false; }
    std::optional<std::string> Input(const std::string&, const std::string&, const std::string&) override { return {}; }
};

/// Entries that a filter of digits and dots lets through, from the harmless to the absurd.
inline const std::vector<std::string>& Entries() {
    static const std::vector<std::string> entries = {
        "0", "1", "24046.8", ".", std::string(1000, '9'), "0." + std::string(400, '0') + "1"};
    return entries;
}

/// Every ion × entries × box orders up to length 3: no exception leaves the sheet, no box shows "inf" or "nan", an
/// emptied box takes what depends on it along. Steps of an order draw their entries a fixed stride apart, so that
/// every pair of entries meets; one order in three then meets another ion.
/// @param dependants  boxes that must be empty once the box has been emptied
template <typename SheetType, typename Dependants>
void RunEveryOrder(const std::vector<int>& boxes, const Dependants& dependants) {
    const AppState state;
    const auto& entries = Entries();
    const auto count = entries.size();
    Deaf deaf;
    for (int ion = 0; ion < CalculatorSheet::IonCount; ++ion) {
        for (std::size_t order = 0; order < boxes.size() * boxes.size() * boxes.size(); ++order) {
            const std::array<int, 3> path = {boxes[order % boxes.size()], boxes[order / boxes.size() % boxes.size()],
                                             boxes[order / boxes.size() / boxes.size()]};
            for (std::size_t pair = 0; pair < count * count; ++pair) {
                const std::array<std::size_t, 3> picks = {pair % count, pair / count,
                                                          (pair % count + pair / count) % count};
                const auto doing = [&] {
                    std::string text = state.Ions.names[static_cast<std::size_t>(ion)];
                    for (std::size_t step = 0; step < 3; ++step)
                        text += " " + std::to_string(path[step]) + "=" + entries[picks[step]].substr(0, 12) + "!";
                    return text;
                };
                SheetType sheet(deaf, state.Ions);
                ASSERT_NO_THROW({
                    sheet.Select(CalculatorSheet::IonList, ion);
                    for (std::size_t step = 0; step < 3; ++step) {
                        if (!sheet.At(path[step]).enabled) continue;
                        sheet.Edited(path[step], entries[picks[step]]);
                        sheet.Enter(path[step]);
                    }
                    if ((order + pair) % 3 == 0)
                        sheet.Select(CalculatorSheet::IonList, (ion + 7) % CalculatorSheet::IonCount);
                }) << doing();
                for (int i = 0; i < sheet.Size(); ++i)
                    ASSERT_FALSE(IsNumberless(sheet.Text(i))) << "box " << i << ": " << sheet.Text(i) << " " << doing();
                for (const int box : path) {
                    if (sheet.Text(box).empty()) continue;
                    sheet.Edited(box, "");
                    for (const int dependant : dependants(box))
                        ASSERT_EQ(sheet.Text(dependant), "") << "box " << dependant << " after " << doing();
                }
            }
        }
    }
}

}  // namespace kelvo::test
