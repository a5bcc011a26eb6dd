#pragma once

#include <istream>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "batch/Arguments.h"
#include "batch/BatchState.h"
#include "batch/Report.h"
#include "calibration/QualityLimits.h"
#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/StateOf.h"

namespace kelvo {

/// The streams of a run.
struct Streams {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;

    /// Tells a line that stops nothing. No file name in it commands the terminal.
    void Note(const std::string& text) const { err << "kelvo-batch: " << Visible(text) << '\n'; }
};

/// Prompts of a tool that asks nobody: what would be shown in a box is kept, a question has the answer No.
class KeptMessages : public Prompts {
 public:
    void Message(const std::string& text, const std::string&, Icon) override { texts.push_back(text); }
    bool Ask(const std::string&, bool, const std::string&) override { return false; }
    bool AskToSave(const std::string&, const std::string&) override { return false; }
    std::optional<std::string> Input(const std::string&, const std::string&, const std::string&) override {
        return std::nullopt;
    }

    /// All that was said, each text once, and forgets it.
    std::string Take();

    std::vector<std::string> texts;
};

class SystemClock : public Clock {
 public:
    DateTime Now() const override;
    double SteadySeconds() const override;
};

/// Options that more than one command takes.
constexpr Option SettingsOption = {"--settings", "KELVO.ini",
                                   "take operator, electrodes, an ion of your own and limits from this file"};
constexpr Option WeightOption = {"--weight", "G/MOL", "molar mass of an ion of your own, \"Custom\""};
constexpr Option JsonOption = {"--json", nullptr, "write JSON, for machines"};

/// The state that a command works with: that of a fresh start with the settings file named by `--settings`, or with no
/// settings at all. The tool reads nothing else, so a result does not depend on whose machine it is worked out on.
/// @throws Failure when the file is not there or not called KELVO.ini, or `--weight` is not above 0
BatchState StateFor(const Arguments& arguments);

/// Row of the ion table by its name, without regard to case. @throws Failure (Usage), which lists the names
std::int16_t IonNamed(const IonSettings& ion, const std::string& name);

/// Reads a calibration file into the state; `in` is what "-" stands for. @throws Failure (File) with the file's name
void OpenCalibration(CalibrationState& state, const std::string& file, std::istream& in, const Arguments& arguments);

/// A temperature given by an option. @throws Failure (Usage) when it is none, or colder than all there is
std::optional<double> CelsiusOf(const Arguments& arguments, std::string_view option);

/// The name of standard input where a file may be named.
constexpr std::string_view StandardInput = "-";

/// Whether the name is that of a descriptor that the shell has opened: "/dev/stdin", "/dev/fd/63" of a process
/// substitution. Such a pipe is read like a file; any other pipe would have to be waited for.
bool IsDescriptor(const std::string& file);
/// Whether that, or standard input, is what the name stands for: a file without a name of its own.
inline bool IsNameless(const std::string& file) {
    return file == StandardInput || IsDescriptor(file);
}

/// Why the name is that of no plain file, in words that say more than the number of the failure; empty when it is one,
/// or a descriptor.
std::string WhyNoPlainFile(const std::string& file);

/// Content of a text file, or of standard input, up to `limit` bytes. @throws Failure (File) with the file's name and
/// what is amiss, also when it is UTF-16 or holds control characters that no text has
std::string TextOfFile(const std::string& file, std::istream& in, std::size_t limit);

}  // namespace kelvo
