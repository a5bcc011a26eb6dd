#include "batch/Workplace.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "batch/Failure.h"
#include "batch/Rows.h"
#include "calibration/CaliFile.h"
#include "calibration/CalibrationFacts.h"
#include "calibration/CalibrationState.h"
#include "core/Clock.h"
#include "core/IonSettings.h"
#include "core/Startup.h"
#include "text/Files.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {

std::string KeptMessages::Take() {
    std::string all;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (std::find(texts.begin(), texts.begin() + static_cast<std::ptrdiff_t>(i), texts[i]) !=
            texts.begin() + static_cast<std::ptrdiff_t>(i))
            continue;
        if (!all.empty()) all += ' ';
        all += texts[i];
    }
    texts.clear();
    return all;
}

DateTime SystemClock::Now() const {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

double SystemClock::SteadySeconds() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

BatchState StateFor(const Arguments& arguments) {
    BatchState state;
    if (const auto file = arguments.Value(SettingsOption.name)) {
        const std::string path = FindFile(*file);
        if (!FileExists(path)) Refuse(ExitCode::File, *file + ": " + ErrorText(ErrorNumber::FileNotFound));
        if (!EqualNoCase(LastPart(path), "KELVO.ini"))
            Refuse(ExitCode::Usage, *file + ": a settings file is called KELVO.ini");
        const std::string folder = path.substr(0, path.size() - LastPart(path).size());
        LoadState(state, {}, folder.empty() ? "./" : folder);
    }
    if (const auto weight = arguments.Number(WeightOption.name)) {
        if (!(*weight > 0) || *weight > 1e6)
            Refuse(ExitCode::Usage, std::string(WeightOption.name) + ": a molar mass is above 0 g/mol");
        state.Ions.weights[CustomIonRow] = state.CustomWeight = static_cast<float>(*weight);
    }
    return state;
}

std::int16_t IonNamed(const IonSettings& ion, const std::string& name) {
    std::string known;
    for (std::size_t i = 0; i < ion.Ions.names.size(); ++i) {
        if (EqualNoCase(ion.Ions.names[i], name) || (i == CustomIonRow && EqualNoCase(name, "Custom")))
            return static_cast<std::int16_t>(i);
        known += (i > 0 ? ", " : "") + ion.Ions.names[i];
    }
    Refuse(ExitCode::Usage, "there is no ion '" + name + "'; known are " + known);
}

bool IsDescriptor(const std::string& file) {
    if (file == "/dev/stdin") return true;
    for (const std::string_view folder : {"/dev/fd/", "/proc/self/fd/"})
        if (file.starts_with(folder) && file.find_first_not_of("0123456789", folder.size()) == std::string::npos)
            return file.size() > folder.size();
    return false;
}

std::string WhyNoPlainFile(const std::string& file) {
    if (IsDescriptor(file)) return {};
    std::error_code failed;
    const auto type = std::filesystem::status(FindFile(file), failed).type();
    if (type == std::filesystem::file_type::directory) return "this is a folder";
    const bool plain = type == std::filesystem::file_type::regular;
    const bool told = type == std::filesystem::file_type::not_found || type == std::filesystem::file_type::none;
    return plain || told ? std::string() : "this is no plain file";
}

namespace {

/// No text has such a byte, and every file of Kelvo is a text.
bool IsBinary(char c) {
    constexpr std::string_view Allowed = "\t\r\n\f\x1a";
    return static_cast<unsigned char>(c) < ' ' && Allowed.find(c) == std::string_view::npos;
}

/// All that a stream has. @throws Failure (File)
std::string BytesOf(std::istream& in, const std::string& name, std::size_t limit) {
    std::string bytes;
    char part[1 << 16];
    while (in.read(part, sizeof part), in.gcount() > 0) {
        bytes.append(part, static_cast<std::size_t>(in.gcount()));
        if (bytes.size() > limit) Refuse(ExitCode::File, name + ": this is too large for such a file");
    }
    if (in.bad() || !in.eof()) Refuse(ExitCode::File, name + ": it could not be read");
    return bytes;
}

std::string BytesOfFile(const std::string& file, std::istream& in, std::size_t limit) {
    if (file == StandardInput) return BytesOf(in, "standard input", limit);
    if (IsDescriptor(file)) {
        std::ifstream pipe(file, std::ios::binary);
        if (!pipe.is_open()) Refuse(ExitCode::File, file + ": " + ErrorText(ErrorNumber::FileNotFound));
        return BytesOf(pipe, file, limit);
    }
    if (const std::string why = WhyNoPlainFile(file); !why.empty()) Refuse(ExitCode::File, file + ": " + why);
    try {
        return ReadWholeFile(file, limit);
    } catch (const RuntimeError& error) {
        Refuse(ExitCode::File, file + ": " + error.what());
    }
}

}  // namespace

std::string TextOfFile(const std::string& file, std::istream& in, std::size_t limit) {
    std::string bytes = BytesOfFile(file, in, limit);
    if (IsUtf16(bytes)) Refuse(ExitCode::File, file + ": " + WhyNoUtf16);
    if (std::any_of(bytes.begin(), bytes.end(), IsBinary)) Refuse(ExitCode::File, file + ": this is no text file");
    return bytes;
}

std::optional<double> CelsiusOf(const Arguments& arguments, std::string_view option) {
    constexpr double AbsoluteZero = -273.15, Hottest = 1000;
    const auto celsius = arguments.Number(option);
    if (celsius && !(*celsius > AbsoluteZero && *celsius <= Hottest))
        Refuse(ExitCode::Usage, std::string(option) + ": a temperature lies above -273.15 °C, and not above 1000 °C");
    return celsius;
}

void OpenCalibration(CalibrationState& state, const std::string& file, std::istream& in, const Arguments& arguments) {
    constexpr std::size_t LargestCalibration = std::size_t{1} << 20;
    const std::string bytes = TextOfFile(file, in, LargestCalibration);
    const std::int16_t ionOfSettings = state.IonIndex;
    try {
        ReadIse(state, bytes);
    } catch (const RuntimeError& error) {
        Refuse(ExitCode::File, file + ": this is no calibration of an ion-selective electrode, or it is damaged (" +
                                   error.what() + ")");
    }
    if (!IsNameless(file)) state.FactsRemark = ReadCalibrationFacts(state, file, bytes);
    if (state.IonIndex == CustomIonRow && ionOfSettings != CustomIonRow && !arguments.Has(WeightOption.name))
        Refuse(ExitCode::Usage, file +
                                    ": it is of an ion of your own, whose molar mass the file does not hold; give "
                                    "it by --weight or --settings");
}

}  // namespace kelvo
