#pragma once

#include <deque>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "simulator/Instrument.h"

namespace kelvo::simulator {

/// What goes wrong with an answer.
enum class Fault {
    None,
    Silence,  ///< no answer
    Half,     ///< the first 12 bytes alone
    Late,     ///< the whole answer, `delay` seconds later
    Last,     ///< another last byte
    Noise,    ///< random bytes before the answer
    Random,   ///< one of the above, with a given chance for each answer
};

struct FaultOrder {
    Fault fault = Fault::None;
    double delay = 0;          ///< seconds, for Late
    std::uint8_t last = 0x20;  ///< for Last
    int bytes = 3;             ///< for Noise
    double chance = 0;         ///< for Random, 0 to 1
    int answers = -1;          ///< how many answers it spoils; -1: until ordered otherwise
};

/// The interface on its line: takes requests apart, answers them in time, spoils answers on command, runs a script.
/// It knows no file handle; whoever drives it hands bytes in, takes due bytes out and tells the time.
class Simulation {
 public:
    explicit Simulation(std::uint32_t seed) : instrument(seed) {}

    Instrument instrument;
    FaultOrder order;
    bool lineUp = true;          ///< false: the line is dropped until it is restored
    bool ended = false;          ///< "quit" was read
    double latency = 0.03;       ///< seconds from a request to its answer
    std::optional<double> step;  ///< model seconds that each answer takes, instead of the real ones

    /// Real time has come to `now` seconds: the model advances (unless it steps) and the script goes on.
    void SetTime(double now);
    /// Bytes from the line at the present time. Requests may come in pieces; what is no request is passed over.
    void Receive(std::span<const std::uint8_t> bytes);
    /// Bytes that are due by now, in order.
    std::vector<std::uint8_t> TakeDue();
    /// Seconds until something is due, none when nothing is.
    std::optional<double> NextDue() const;
    /// The line has been dropped: what was on its way is lost.
    void ForgetLine();

    /// Lines of a script, run one after another; "wait" holds it up in model time.
    void AddScript(const std::vector<std::string>& lines);
    /// Runs one command line. @return what to tell the user, empty when there is nothing to say.
    std::string Command(const std::string& line);
    void WaitFor(double seconds) { waitUntil_ = modelTime_ + seconds; }
    /// What script lines had to say since the last call.
    std::vector<std::string> TakeRemarks();

    double ModelTime() const { return modelTime_; }
    long Requests() const { return requests_; }

 private:
    struct Sending {
        double due;
        std::vector<std::uint8_t> bytes;
    };
    void Answer();
    void AdvanceModel(double seconds);
    void RunScript();
    FaultOrder NextFault();

    double now_ = 0, modelTime_ = 0, waitUntil_ = 0;
    long requests_ = 0;
    bool started_ = false;
    std::vector<std::uint8_t> pending_;
    std::deque<Sending> line_;
    std::deque<std::string> script_;
    std::vector<std::string> remarks_;
};

}  // namespace kelvo::simulator
