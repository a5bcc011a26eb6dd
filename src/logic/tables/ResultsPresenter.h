#pragma once

#include <string>
#include <vector>

#include "core/StateOf.h"
#include "tables/ReportedResult.h"

namespace kelvo {

class FileChooser;
class Prompts;
class TablePresenter;
struct PrintServices;

/// Strikes a row of the shown table out, or takes it back. Asks for the reason, without which nothing is struck.
/// @return what is to be told, else empty
std::string StrikeRows(TablePresenter& table, const std::vector<int>& rows, Prompts& prompts);
std::string TakeRowsBack(TablePresenter& table, const std::vector<int>& rows);

/// The window "Results" without its widgets: the results of the table that is shown, one of them in hand.
class ResultsPresenter {
 public:
    ResultsPresenter(StateOf<const Paths, const TableState, const HardwareSettings, StatusMessages> state,
                     TablePresenter& table, Prompts& prompts, FileChooser& files)
        : state_(state), table_(table), prompts_(prompts), files_(files) {}

    /// Works the results out anew; the sample in hand stays in hand.
    void Refresh();
    const std::vector<ReportedResult>& Results() const { return results_; }
    /// None where the table has no samples.
    const ReportedResult* InHand() const;
    int Place() const { return place_; }
    void Select(int place);
    /// "Results of RUN.TAB", or why there are none.
    std::string Heading() const;

    /// The row of the sample in hand at that place of its list. @return what is to be told, else empty
    std::string Strike(int place);
    std::string TakeBack(int place);
    /// Dilution factor, blank and its deviation of the sample in hand as typed; empty: 1, 0, not known.
    /// @return which of them is refused and why; else what is to be told, else empty
    std::string Correct(const std::string& dilution, const std::string& blank, const std::string& deviation);

    /// Asks for a name and writes the results: ".csv", ".xlsx" or ".json". The outcome stands in the status line.
    void Export(const std::string& extension);
    bool Print(const PrintServices& services);

 private:
    StateOf<const Paths, const TableState, const HardwareSettings, StatusMessages> state_;
    TablePresenter& table_;
    Prompts& prompts_;
    FileChooser& files_;
    std::vector<ReportedResult> results_;
    int place_ = 0;
};

}  // namespace kelvo
