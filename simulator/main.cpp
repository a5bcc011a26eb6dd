// A measuring interface made of software: it stands on a pseudo-terminal under the name of one of the user's ports
// and answers the program's requests with true frames.
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "link/PortNames.h"
#include "simulator/Commands.h"
#include "simulator/PseudoTerminal.h"
#include "simulator/Simulation.h"

namespace {

using namespace kelvo::simulator;

volatile std::sig_atomic_t stopped = 0;

struct Options {
    std::string link;
    std::string script;
    std::uint32_t seed = 1;
    double step = 0;
    double latency = -1;
    bool untilEnd = false;  ///< ends when its standard input does
    bool quiet = false;
    bool asksWhetherNeeded = false;
};

const char* const Usage =
    "kelvo-simulator: a measuring interface made of software\n"
    "\n"
    "  --port N       stand as port COMN of this user (1 to 16; COM1 when nothing is said)\n"
    "  --link PATH    stand under this name instead\n"
    "  --no-link      stand under the name of the pseudo-terminal alone\n"
    "  --script FILE  run the commands of a file\n"
    "  --seed N       noise and random faults by this seed (1)\n"
    "  --step S       let S seconds pass in the model with each answer instead of the real ones; with a seed and a\n"
    "                 script a run then repeats byte for byte\n"
    "  --latency S    seconds from a request to its answer (0.03, the time of a frame at 9600 bits per second)\n"
    "  --needed       only tell by the exit code whether it is needed: 0 when this user has no port linked and the\n"
    "                 machine has no serial device, else 3\n"
    "  --until-eof    end when standard input ends\n"
    "  --quiet        say nothing but errors\n"
    "  -h, --help     this page\n"
    "  -V, --version  the version\n"
    "\n"
    "Commands, on standard input or in a script, one a line; # begins a remark:\n"
    "\n";

int BadUsage(const std::string& text) {
    std::cerr << "kelvo-simulator: " << text << "; try --help\n";
    return 2;
}

/// Value of an option as a number; the whole text must be one.
bool ReadNumber(const std::string& text, double lowest, double highest, double& value) {
    char* end = nullptr;
    value = std::strtod(text.c_str(), &end);
    return !text.empty() && *end == '\0' && value >= lowest && value <= highest;
}

std::string LinkOfPort(int number) {
    return kelvo::PortConfigFolder() + "ports/COM" + std::to_string(number);
}

/// @return -1 to go on, else the exit code.
int ReadOptions(const std::vector<std::string>& words, Options& options) {
    options.link = LinkOfPort(1);
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        const std::string value = i + 1 < words.size() ? words[i + 1] : std::string();
        double number = 0;
        if (word == "--help" || word == "-h") {
            std::cout << Usage << CommandHelp() << "\n";
            return 0;
        }
        if (word == "--version" || word == "-V") {
            std::cout << "kelvo-simulator " KELVO_VERSION "\n";
            return 0;
        }
        if (word == "--no-link") {
            options.link.clear();
        } else if (word == "--needed") {
            options.asksWhetherNeeded = true;
        } else if (word == "--until-eof") {
            options.untilEnd = true;
        } else if (word == "--quiet") {
            options.quiet = true;
        } else if (word == "--port" && ReadNumber(value, 1, kelvo::LastPort, number)) {
            options.link = LinkOfPort(static_cast<int>(number));
            ++i;
        } else if (word == "--seed" && ReadNumber(value, 0, 4294967295.0, number)) {
            options.seed = static_cast<std::uint32_t>(number);
            ++i;
        } else if (word == "--step" && ReadNumber(value, 1e-6, 1e6, number)) {
            options.step = number;
            ++i;
        } else if (word == "--latency" && ReadNumber(value, 0, 3600, number)) {
            options.latency = number;
            ++i;
        } else if (word == "--link" && !value.empty()) {
            options.link = value;
            ++i;
        } else if (word == "--script" && !value.empty()) {
            options.script = value;
            ++i;
        } else {
            return BadUsage("'" + word + "' is no option, or its value is wrong");
        }
    }
    return -1;
}

/// Complete lines out of a stream of bytes.
class LineBuffer {
 public:
    std::vector<std::string> Take(const char* bytes, std::size_t count) {
        text_.append(bytes, count);
        std::vector<std::string> lines;
        for (std::size_t end; (end = text_.find('\n')) != std::string::npos; text_.erase(0, end + 1))
            lines.push_back(text_.substr(0, end));
        return lines;
    }

 private:
    std::string text_;
};

void Say(const std::string& text, bool quiet) {
    const bool error = text.starts_with("error: ");
    if (error)
        std::cerr << text << std::endl;
    else if (!quiet)
        std::cout << text << std::endl;
}

double Seconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

class Runner {
 public:
    Runner(const Options& options, Simulation& simulation) : options_(options), simulation_(simulation) {}

    int Run() {
        while (!simulation_.ended && stopped == 0) {
            simulation_.SetTime(Seconds());
            for (const std::string& remark : simulation_.TakeRemarks())
                Say(remark, options_.quiet);
            FollowLine();
            if (terminal_.IsOpen()) terminal_.Write(simulation_.TakeDue());
            Wait();
        }
        return 0;
    }

 private:
    void FollowLine() {
        if (simulation_.lineUp && !terminal_.IsOpen()) {
            terminal_.Open(options_.link);
            const std::string name = options_.link.empty() ? std::string() : options_.link + " -> ";
            Say("interface at " + name + terminal_.Device(), options_.quiet);
        } else if (!simulation_.lineUp && terminal_.IsOpen()) {
            terminal_.Drop();
        }
    }

    void Wait() {
        constexpr int Longest = 100, Hung = 20;
        int timeout = hung_ ? Hung : Longest;
        if (const auto due = simulation_.NextDue())
            timeout = std::min(timeout, std::max(0, static_cast<int>(*due * 1000) + 1));
        // While nobody has the other end open the handle is always ready; it is looked at by time then.
        pollfd handles[] = {{inputOpen_ ? STDIN_FILENO : -1, POLLIN, 0}, {hung_ ? -1 : terminal_.Handle(), POLLIN, 0}};
        poll(handles, 2, timeout);
        simulation_.SetTime(Seconds());
        if ((handles[0].revents & (POLLIN | POLLHUP)) != 0) ReadCommands();
        if (!terminal_.IsOpen()) return;
        const auto bytes = terminal_.Read();
        hung_ = bytes.empty() && (hung_ ? HungUp() : (handles[1].revents & POLLHUP) != 0);
        simulation_.Receive(bytes);
    }

    bool HungUp() const {
        pollfd handle = {terminal_.Handle(), POLLIN, 0};
        poll(&handle, 1, 0);
        return (handle.revents & POLLHUP) != 0;
    }

    void ReadCommands() {
        char buffer[512];
        const ssize_t count = read(STDIN_FILENO, buffer, sizeof buffer);
        if (count <= 0) {
            inputOpen_ = false;
            if (options_.untilEnd) simulation_.ended = true;
            return;
        }
        for (const std::string& line : lines_.Take(buffer, static_cast<std::size_t>(count))) {
            if (const std::string answer = simulation_.Command(line); !answer.empty()) Say(answer, options_.quiet);
            // At once: a line that is dropped and restored in one breath has been out all the same.
            FollowLine();
        }
    }

    const Options& options_;
    Simulation& simulation_;
    PseudoTerminal terminal_;
    LineBuffer lines_;
    bool inputOpen_ = true, hung_ = false;
};

/// Whether there is no port that the program could find.
bool IsNeeded() {
    const kelvo::PortNames names(kelvo::PortConfigFolder() + "ports/");
    for (int number = 1; number <= kelvo::LastPort; ++number)
        if (names.Pinned(number) && !PseudoTerminal::IsLeftOver(LinkOfPort(number))) return false;
    return names.SerialDevices().empty();
}

bool AddScript(const std::string& file, Simulation& simulation) {
    std::ifstream in(file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    if (!in.eof()) return false;
    simulation.AddScript(lines);
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (const int code = ReadOptions({argv + 1, argv + argc}, options); code >= 0) return code;
    if (options.asksWhetherNeeded) return IsNeeded() ? 0 : 3;
    Simulation simulation(options.seed);
    if (options.step > 0) simulation.step = options.step;
    if (options.latency >= 0) simulation.latency = options.latency;
    if (!options.script.empty() && !AddScript(options.script, simulation))
        return BadUsage("cannot read " + options.script);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        std::signal(signal, [](int) { stopped = 1; });
    std::signal(SIGPIPE, SIG_IGN);
    try {
        return Runner(options, simulation).Run();
    } catch (const std::exception& failure) {
        std::cerr << "kelvo-simulator: " << failure.what() << "\n";
        return 1;
    }
}
