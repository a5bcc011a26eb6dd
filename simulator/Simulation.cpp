#include "simulator/Simulation.h"

#include <algorithm>
#include <utility>

#include "simulator/Commands.h"

namespace kelvo::simulator {
namespace {

/// Length of the request that starts with this byte, 0 when none does.
std::size_t RequestLength(std::uint8_t first) {
    switch (first) {
        case 0x02:
        case 0x18: return 2;
        case 0x01: return 4;
        default: return 0;
    }
}

}  // namespace

void Simulation::SetTime(double now) {
    const double passed = started_ ? now - now_ : 0;
    started_ = true;
    now_ = now;
    if (!step && passed > 0) AdvanceModel(passed);
    RunScript();
}

void Simulation::AdvanceModel(double seconds) {
    modelTime_ += seconds;
    instrument.Advance(seconds);
}

void Simulation::Receive(std::span<const std::uint8_t> bytes) {
    if (!lineUp) return;
    pending_.insert(pending_.end(), bytes.begin(), bytes.end());
    while (!pending_.empty()) {
        const std::size_t length = RequestLength(pending_.front());
        if (length > pending_.size()) return;
        const bool poll = length == 2 && pending_[0] == 0x02 && pending_[1] == 0x00;
        pending_.erase(pending_.begin(),
                       pending_.begin() + static_cast<std::ptrdiff_t>(std::max<std::size_t>(1, length)));
        if (poll) Answer();
    }
}

FaultOrder Simulation::NextFault() {
    FaultOrder fault = order;
    if (order.answers > 0 && --order.answers == 0) order = FaultOrder();
    if (fault.fault != Fault::Random) return fault;
    constexpr double Words = 4294967296.0;
    if (instrument.Random()() / Words >= fault.chance) return {};
    constexpr Fault Choices[] = {Fault::Silence, Fault::Half, Fault::Late, Fault::Last, Fault::Noise};
    fault.fault = Choices[instrument.Random()() % std::size(Choices)];
    fault.last = static_cast<std::uint8_t>(instrument.Random()());
    fault.delay = 0.05;
    fault.bytes = 1 + static_cast<int>(instrument.Random()() % 30);
    return fault;
}

void Simulation::Answer() {
    ++requests_;
    if (step) {
        AdvanceModel(*step);
        RunScript();
    }
    std::vector<std::uint8_t> bytes = instrument.Frame();
    const FaultOrder fault = NextFault();
    double due = now_ + latency;
    switch (fault.fault) {
        case Fault::Silence: return;
        case Fault::Half: bytes.resize(bytes.size() / 2); break;
        case Fault::Late: due += fault.delay; break;
        case Fault::Last: bytes.back() = fault.last; break;
        case Fault::Noise:
            for (int i = 0; i < fault.bytes; ++i)
                bytes.insert(bytes.begin(), static_cast<std::uint8_t>(instrument.Random()()));
            break;
        case Fault::None:
        case Fault::Random: break;
    }
    const auto after = [due](const Sending& sending) { return sending.due > due; };
    line_.insert(std::find_if(line_.begin(), line_.end(), after), Sending{due, std::move(bytes)});
}

std::vector<std::uint8_t> Simulation::TakeDue() {
    std::vector<std::uint8_t> bytes;
    while (!line_.empty() && line_.front().due <= now_) {
        bytes.insert(bytes.end(), line_.front().bytes.begin(), line_.front().bytes.end());
        line_.pop_front();
    }
    return bytes;
}

std::optional<double> Simulation::NextDue() const {
    std::optional<double> next;
    if (!line_.empty()) next = line_.front().due - now_;
    if (!script_.empty() && !step) next = std::min(next.value_or(waitUntil_ - modelTime_), waitUntil_ - modelTime_);
    return next;
}

void Simulation::ForgetLine() {
    line_.clear();
    pending_.clear();
}

void Simulation::AddScript(const std::vector<std::string>& lines) {
    script_.insert(script_.end(), lines.begin(), lines.end());
}

void Simulation::RunScript() {
    while (!script_.empty() && modelTime_ >= waitUntil_ && !ended) {
        const std::string line = script_.front();
        script_.pop_front();
        if (std::string remark = Command(line); !remark.empty()) remarks_.push_back(std::move(remark));
    }
}

std::string Simulation::Command(const std::string& line) {
    return RunCommand(*this, line);
}

std::vector<std::string> Simulation::TakeRemarks() {
    return std::exchange(remarks_, {});
}

}  // namespace kelvo::simulator
