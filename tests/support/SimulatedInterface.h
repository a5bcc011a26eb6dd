#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <string>

#include "simulator/PseudoTerminal.h"
#include "simulator/Simulation.h"

namespace kelvo::test {

/// The interface made of software inside a test: a real pseudo-terminal under a port link, served by the test's own
/// event loop. One second passes in the model with each answer.
class SimulatedInterface {
 public:
    explicit SimulatedInterface(std::string link, std::uint32_t seed = 1) : simulation(seed), link_(std::move(link)) {
        simulation.step = 1;
        simulation.latency = 0;
        clock_.start();
        timer_.setInterval(2);
        timer_.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer_, &QTimer::timeout, [this] { Poll(); });
        timer_.start();
        PlugIn();
    }

    void PlugIn() {
        simulation.lineUp = true;
        terminal.Open(link_);
    }
    void PullOut() {
        simulation.ForgetLine();
        simulation.lineUp = false;
        terminal.Drop();
    }
    /// Runs a command line, as the analyst would type it at the simulator.
    void Execute(const std::string& line) {
        const std::string answer = simulation.Command(line);
        if (!answer.empty()) throw std::runtime_error(answer);
    }

    int answers = 0;  ///< written to the line, whole or not
    simulator::Simulation simulation;
    simulator::PseudoTerminal terminal;

 private:
    void Poll() {
        if (!terminal.IsOpen()) return;
        simulation.SetTime(static_cast<double>(clock_.nsecsElapsed()) / 1e9);
        simulation.Receive(terminal.Read());
        const auto due = simulation.TakeDue();
        if (due.empty()) return;
        terminal.Write(due);
        ++answers;
    }

    std::string link_;
    QElapsedTimer clock_;
    QTimer timer_;
};

}  // namespace kelvo::test
