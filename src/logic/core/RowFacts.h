#pragma once

#include <initializer_list>
#include <map>
#include <string>
#include <utility>

namespace kelvo {

/// What is known of a row of a table beyond its cells: texts under names of lower-case letters and digits. The columns
/// of a table are fixed; what they have no room for goes with the row under such a name, into every export and print,
/// and into the file beside the table's own (`tables/RowFactsFile`).
class RowFacts {
 public:
    RowFacts() = default;
    RowFacts(std::initializer_list<std::pair<const std::string, std::string>> texts) : texts_(texts) {}

    /// Empty when there is none.
    std::string Get(const std::string& name) const {
        const auto found = texts_.find(name);
        return found == texts_.end() ? std::string() : found->second;
    }
    /// An empty text takes the fact away.
    void Set(const std::string& name, std::string text) {
        if (text.empty())
            texts_.erase(name);
        else
            texts_.insert_or_assign(name, std::move(text));
    }
    /// Adds to the words that are told beside the value, behind "; "; words that stand there already are not repeated.
    void Remark(const std::string& words);

    /// Takes over what the other ones say.
    void Add(const RowFacts& others) {
        for (const auto& [name, text] : others.texts_)
            Set(name, text);
    }
    bool Empty() const { return texts_.empty(); }
    /// Whether anything was known when the row was measured; what the analyst has said of it afterwards does not count.
    bool KnownWhenMeasured() const;
    /// In the order of their names.
    const std::map<std::string, std::string>& All() const { return texts_; }
    bool operator==(const RowFacts&) const = default;

 private:
    std::map<std::string, std::string> texts_;
};

/// Name of the file beside a table that holds the facts of its rows: "RUN.TAB" -> "RUN.TAB.rows".
std::string FactsFileOf(const std::string& table);

/// Names of facts. Each is described in `docs/file-formats.md`.
namespace fact {
inline constexpr const char* Low = "low";              ///< lower bound of the interval, as it was shown
inline constexpr const char* High = "high";            ///< upper bound
inline constexpr const char* Unit = "unit";            ///< of the bounds: "ppm", "mol/L"
inline constexpr const char* Basis = "basis";          ///< what the interval is and rests on
inline constexpr const char* Remark = "remark";        ///< words told beside the value, parts joined by "; "
inline constexpr const char* Slope = "slope";          ///< mV per decade that the result was worked out with
inline constexpr const char* Celsius = "celsius";      ///< °C that the result was worked out with
inline constexpr const char* Additions = "additions";  ///< of several: mV, then mL and mV of each, between blanks
inline constexpr const char* Quality1 = "quality1";    ///< of electrode 1 at a point of a recording
inline constexpr const char* Quality2 = "quality2";    ///< of electrode 2

// What the analyst says of a row afterwards; dilution and blank a sample has on each of its rows.
inline constexpr const char* Struck = "struck";      ///< why the row was struck out; it counts nowhere
inline constexpr const char* Dilution = "dilution";  ///< volume after by volume before, a factor
inline constexpr const char* Blank = "blank";        ///< of the measured solution, in the unit of the result
inline constexpr const char* BlankU = "blanku";      ///< one standard deviation of it
inline constexpr const char* Control = "control";    ///< of a control sample: target and limits, "10 90 110"

// Of the row of a standard that was measured again, and of the samples before it.
inline constexpr const char* CheckStandard = "checkstandard";  ///< "19.00 ppm"
inline constexpr const char* CheckExpected = "checkexpected";  ///< mV that it had in the calibration
inline constexpr const char* CheckDrift = "checkdrift";        ///< mV
inline constexpr const char* CheckPercent = "checkpercent";    ///< of the concentration
inline constexpr const char* CheckLimit = "checklimit";        ///< "1 mV", "1 mV, 5 %"
inline constexpr const char* CheckVerdict = "checkverdict";    ///< "good" or "failed"
inline constexpr const char* Uncovered = "uncovered";          ///< of a sample: the check that failed, in words
inline constexpr const char* Corrected = "corrected";          ///< mV of a sample, by bracketing
inline constexpr const char* DriftU = "driftu";  ///< mV, what drift makes a sample between good checks uncertain
inline constexpr const char* Correction = "correction";  ///< "-0.21 mV between 10:41 and 11:20"
}  // namespace fact

}  // namespace kelvo
