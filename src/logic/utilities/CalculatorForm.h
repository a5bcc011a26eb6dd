#pragma once

#include <array>
#include <functional>
#include <span>
#include <vector>

#include "core/FormModel.h"
#include "core/Tables.h"

namespace kelvo {

/// What the three calculators have in common: one ion list, one "Refresh" button, a key filter of digits and the
/// dot, boxes that depend on others, and steps whose run-time failure is told once, in the calculator's own words.
/// They read no file and keep nothing when closed.
class CalculatorForm : public FormModel {
 public:
    /// The calculators offer the ions of rows 0 to 23: all but "pH(Hydrogen)" and "Custom".
    static constexpr int IonCount = 24;
    static constexpr int IonList = 0, RefreshButton = 0;

    struct Words {
        const char* wrongKey;    ///< a key outside the filter
        const char* outOfRange;  ///< a run-time failure in a step
    };

    int Ion() const { return ion_; }
    int Selected(int) const override { return ion_; }
    void Select(int list, int row) final;
    void Press(int button) final;
    bool KeyAllowed(int i, char32_t key) const override;
    void KeyRefused(int i) override;
    void Emptied(int i) override;
    /// A quiet line on results that stand beside entries they do not belong to; empty when all belong together.
    virtual std::string StatusMessage() const { return {}; }

 protected:
    /// Boxes that go empty together with a box.
    struct Dependency {
        int box;
        std::vector<int> dependants;
    };

    CalculatorForm(int boxes, Prompts& prompts, const IonTable& ions, Words words,
                   std::span<const Dependency> dependencies);

    /// A row of the list has been chosen; `Ion()` is it already.
    virtual void IonChosen() = 0;
    /// Puts the form back as "Refresh" does. The list has no row by then.
    virtual void Refresh() = 0;

    /// Runs a step; a run-time failure in it is told once.
    void Guarded(const std::function<void()>& step);
    void Say(const char* text);
    bool Holds(int i) const { return !Text(i).empty(); }
    double Value(int i) const;
    void Empty(int first, int last);
    void FocusOnIonList() { FocusOn(FirstList + IonList); }

    /// The ppm of box `from` as mol/L, "#.000E-0", in box `to`; and the other way round, "#0.000".
    void WriteMolar(int to, int from);
    void WritePpm(int to, int from);

    const IonTable& ions_;

    /// One row of a calculator's table of boxes: what Enter does in a box when it is empty, and when it is not.
    template <typename Self>
    struct Rule {
        int box;
        int goTo;                 ///< when empty: the box that takes the focus, or NoFocus
        std::vector<int> unless;  ///< when empty and there is no such box: "insufficient",
                                  ///< unless one of these holds text
        void (Self::*filled)();
    };

    /// Enter in a box by its row of the table; a box without a row does nothing.
    template <typename Self>
    void Follow(std::span<const Rule<Self>> rules, int box, const char* insufficient) {
        for (const auto& rule : rules) {
            if (rule.box != box) continue;
            if (Holds(box)) {
                Guarded([&] { (static_cast<Self*>(this)->*rule.filled)(); });
            } else if (rule.goTo != NoFocus) {
                FocusOn(rule.goTo);
            } else if (!AnyHolds(rule.unless)) {
                Say(insufficient);
            }
            return;
        }
    }

 private:
    bool AnyHolds(const std::vector<int>& boxes) const;

    Words words_;
    std::span<const Dependency> dependencies_;
    int ion_ = NoIon;
};

}  // namespace kelvo
