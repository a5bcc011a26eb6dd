#include "simulator/Commands.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "simulator/Simulation.h"

namespace kelvo::simulator {
namespace {

using Words = std::vector<std::string>;

/// A line that cannot be carried out; its text is told to the user.
struct BadCommand : std::runtime_error {
    using std::runtime_error::runtime_error;
};

double Number(const std::string& word, double lowest, double highest) {
    double value = 0;
    const char* end = word.data() + word.size();
    const auto result = std::from_chars(word.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end || !std::isfinite(value))
        throw BadCommand("'" + word + "' is no number");
    if (value < lowest || value > highest) throw BadCommand("'" + word + "' is out of range");
    return value;
}

const std::string& At(const Words& words, std::size_t i) {
    if (i >= words.size()) throw BadCommand("something is missing; try 'help'");
    return words[i];
}

std::size_t Index(const Words& words, std::size_t i) {
    return static_cast<std::size_t>(Number(At(words, i), 1, 2)) - 1;
}

/// A concentration with its unit, mol/L when none stands there.
double Molar(const Simulation& simulation, const Words& words, std::size_t i) {
    const double value = Number(At(words, i), 0, 1e7);
    const std::string unit = i + 1 < words.size() ? words[i + 1] : "mol/L";
    if (unit == "ppm") return value / (simulation.instrument.weight * 1000);
    if (unit == "mol/L" || unit == "M") return value;
    throw BadCommand("'" + unit + "' is no unit; it is mol/L or ppm");
}

std::string Immerse(Simulation& simulation, const Words& words) {
    simulation.instrument.beaker.molar = Molar(simulation, words, 1);
    return {};
}

std::string Buffer(Simulation& simulation, const Words& words) {
    simulation.instrument.beaker.ph = Number(At(words, 1), -2, 16);
    return {};
}

std::string Add(Simulation& simulation, const Words& words) {
    // add 10 mL of 1000 ppm to 100 mL
    if (At(words, 2) != "mL" || At(words, 3) != "of" || At(words, 6) != "to" || At(words, 8) != "mL")
        throw BadCommand("it goes: add 10 mL of 1000 ppm to 100 mL");
    const double volume = Number(words[1], 0, 1e6), sample = Number(words[7], 1e-6, 1e6);
    simulation.instrument.Add(volume, Molar(simulation, words, 4), sample);
    return {};
}

std::string Temperature(Simulation& simulation, const Words& words) {
    simulation.instrument.beaker.celsius = Number(At(words, 1), -20, 110);
    return {};
}

std::string Plug(Simulation& simulation, const Words& words) {
    if (At(words, 1) != "sensor") throw BadCommand("it goes: plug sensor 1, unplug sensor 1");
    simulation.instrument.sensors[Index(words, 2)] = words[0] == "plug";
    return {};
}

std::string Ion(Simulation& simulation, const Words& words) {
    if (!simulation.instrument.SelectIon(At(words, 1))) throw BadCommand("'" + words[1] + "' is no ion of the table");
    return {};
}

std::string ElectrodeCommand(Simulation& simulation, const Words& words) {
    Electrode& electrode = simulation.instrument.electrodes[Index(words, 1)];
    const std::string& what = At(words, 2);
    if (what == "ise")
        electrode.kind = Electrode::Kind::Ise;
    else if (what == "ph")
        electrode.kind = Electrode::Kind::Ph;
    else if (what == "off")
        electrode.kind = Electrode::Kind::Open;
    else if (what == "eo")
        electrode.eo = Number(At(words, 3), -2000, 2000);
    else if (what == "slope")
        electrode.slope = Number(At(words, 3), -500, 500);
    else if (what == "response")
        electrode.response = Number(At(words, 3), 0, 3600);
    else if (what == "noise")
        electrode.noise = Number(At(words, 3), 0, 1000);
    else if (what == "drift")
        electrode.drift = Number(At(words, 3), -1000, 1000);
    else
        throw BadCommand("'" + what + "' is nothing of an electrode");
    return {};
}

std::uint8_t HexByte(const std::string& word) {
    unsigned value = 0;
    const char* end = word.data() + word.size();
    const auto result = std::from_chars(word.data(), end, value, 16);
    if (result.ec != std::errc() || result.ptr != end || value > 0xFF)
        throw BadCommand("'" + word + "' is no byte; it is two hexadecimal digits");
    return static_cast<std::uint8_t>(value);
}

std::string FaultCommand(Simulation& simulation, const Words& words) {
    FaultOrder order;
    std::size_t next = 2;
    const std::string& what = At(words, 1);
    if (what == "none") {
        order.fault = Fault::None;
    } else if (what == "silence") {
        order.fault = Fault::Silence;
    } else if (what == "half") {
        order.fault = Fault::Half;
    } else if (what == "late") {
        order.fault = Fault::Late;
        order.delay = Number(At(words, next++), 0, 3600);
    } else if (what == "last") {
        order.fault = Fault::Last;
        order.last = HexByte(At(words, next++));
    } else if (what == "noise") {
        order.fault = Fault::Noise;
        order.bytes = static_cast<int>(Number(At(words, next++), 1, 1000));
    } else if (what == "random") {
        order.fault = Fault::Random;
        order.chance = Number(At(words, next++), 0, 1);
    } else {
        throw BadCommand("'" + what + "' is no fault");
    }
    if (next < words.size()) order.answers = static_cast<int>(Number(words[next], 1, 1e9));
    simulation.order = order;
    return {};
}

std::string Line(Simulation& simulation, const Words& words) {
    simulation.lineUp = words[0] == "restore";
    simulation.ForgetLine();
    return {};
}

std::string Wait(Simulation& simulation, const Words& words) {
    simulation.WaitFor(Number(At(words, 1), 0, 1e6));
    return {};
}

std::string Show(Simulation& simulation, const Words&) {
    const Instrument& instrument = simulation.instrument;
    char text[512];
    std::snprintf(text, sizeof text,
                  "%s %.4g mol/L (%.4g ppm), pH %.2f, %.1f °C; electrode 1 %.1f mV, electrode 2 %.1f mV; "
                  "sensors %s %s; line %s; %ld requests in %.0f s",
                  instrument.ion.c_str(), instrument.beaker.molar, instrument.beaker.molar * instrument.weight * 1000,
                  instrument.beaker.ph, instrument.beaker.celsius, instrument.electrodes[0].settled,
                  instrument.electrodes[1].settled, instrument.sensors[0] ? "in" : "out",
                  instrument.sensors[1] ? "in" : "out", simulation.lineUp ? "up" : "down", simulation.Requests(),
                  simulation.ModelTime());
    return text;
}

std::string Help(Simulation&, const Words&) {
    return CommandHelp();
}

std::string Quit(Simulation& simulation, const Words&) {
    simulation.ended = true;
    return {};
}

struct CommandRow {
    const char* name;
    std::string (*run)(Simulation&, const Words&);
    const char* help;
};

constexpr CommandRow Commands[] = {
    {"immerse", Immerse, "immerse 1e-3 [mol/L|ppm]       a beaker with that much of the ion"},
    {"buffer", Buffer, "buffer 7.00                    a beaker of that pH"},
    {"add", Add, "add 10 mL of 1000 ppm to 100 mL  a known addition to the beaker (ppm or mol/L)"},
    {"temperature", Temperature, "temperature 25                 °C of the beaker"},
    {"ion", Ion, "ion F                          which ion ppm means, by the name in the program's table"},
    {"electrode", ElectrodeCommand,
     "electrode 1 ise|ph|off         what is plugged into channel 1 or 2; also:\n"
     "electrode 1 eo -120            mV at 1 mol/L or at pH 0\n"
     "electrode 1 slope -58.2        mV per decade at 25 °C\n"
     "electrode 1 response 2         time constant, seconds\n"
     "electrode 1 noise 0.05         standard deviation, mV\n"
     "electrode 1 drift 0            mV per hour"},
    {"plug", Plug, "plug sensor 1                  temperature sensor 1 or 2 comes back"},
    {"unplug", Plug, "unplug sensor 1                temperature sensor 1 or 2 is pulled out"},
    {"fault", FaultCommand,
     "fault silence [n]              no answer to the next n requests (to all without n)\n"
     "fault half [n]                 half a frame\n"
     "fault late 1.5 [n]             a whole frame, so many seconds late\n"
     "fault last 20 [n]              another last byte, hexadecimal\n"
     "fault noise 3 [n]              so many random bytes before the frame\n"
     "fault random 0.01 [n]          any of these, with that chance for each answer\n"
     "fault none                     true frames again"},
    {"drop", Line, "drop                           the line is pulled out"},
    {"restore", Line, "restore                        the line is back"},
    {"wait", Wait, "wait 20                        hold the script up so many seconds (scripts alone)"},
    {"show", Show, "show                           how things stand"},
    {"help", Help, "help                           this list"},
    {"quit", Quit, "quit                           end"},
};

}  // namespace

std::string CommandHelp() {
    std::string text;
    for (const CommandRow& row : Commands)
        text += (text.empty() ? "" : "\n") + std::string(row.help);
    return text;
}

std::string RunCommand(Simulation& simulation, const std::string& line) {
    std::istringstream in(line.substr(0, line.find('#')));
    Words words;
    for (std::string word; in >> word;)
        words.push_back(word);
    if (words.empty()) return {};
    try {
        for (const CommandRow& row : Commands)
            if (words[0] == row.name) return row.run(simulation, words);
        throw BadCommand("'" + words[0] + "' is no command; try 'help'");
    } catch (const BadCommand& bad) {
        return std::string("error: ") + bad.what();
    }
}

}  // namespace kelvo::simulator
