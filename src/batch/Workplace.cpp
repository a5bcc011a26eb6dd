#include "batch/Workplace.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "batch/Failure.h"
#include "calibration/CaliFile.h"
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

AppState StateFor(const Arguments& arguments) {
    AppState state;
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

std::int16_t IonNamed(const AppState& state, const std::string& name) {
    std::string known;
    for (std::size_t i = 0; i < state.Ions.names.size(); ++i) {
        if (EqualNoCase(state.Ions.names[i], name) || (i == CustomIonRow && EqualNoCase(name, "Custom")))
            return static_cast<std::int16_t>(i);
        known += (i > 0 ? ", " : "") + state.Ions.names[i];
    }
    Refuse(ExitCode::Usage, "there is no ion '" + name + "'; known are " + known);
}

namespace {

/// Why the name is that of no plain file, in words that say more than the number of the failure; empty when it is one.
std::string WhyNoPlainFile(const std::string& file) {
    std::error_code failed;
    const auto type = std::filesystem::status(FindFile(file), failed).type();
    if (type == std::filesystem::file_type::directory) return "this is a folder";
    const bool plain = type == std::filesystem::file_type::regular;
    const bool told = type == std::filesystem::file_type::not_found || type == std::filesystem::file_type::none;
    return plain || told ? std::string() : "this is no plain file";
}

/// No text has such a byte, and every file of Kelvo is a text.
bool IsBinary(char c) {
    constexpr std::string_view Allowed = "\t\r\n\f\x1a";
    return static_cast<unsigned char>(c) < ' ' && Allowed.find(c) == std::string_view::npos;
}

}  // namespace

std::string TextOfFile(const std::string& file, std::size_t limit) {
    if (const std::string why = WhyNoPlainFile(file); !why.empty()) Refuse(ExitCode::File, file + ": " + why);
    std::string bytes;
    try {
        bytes = ReadWholeFile(file, limit);
    } catch (const RuntimeError& error) {
        Refuse(ExitCode::File, file + ": " + error.what());
    }
    if (std::any_of(bytes.begin(), bytes.end(), IsBinary)) Refuse(ExitCode::File, file + ": this is no text file");
    return bytes;
}

void OpenCalibration(AppState& state, const std::string& file, const Arguments& arguments) {
    constexpr std::size_t LargestCalibration = std::size_t{1} << 20;
    const std::string bytes = TextOfFile(file, LargestCalibration);
    const std::int16_t ionOfSettings = state.IonIndex;
    try {
        ReadIse(state, bytes);
    } catch (const RuntimeError& error) {
        Refuse(ExitCode::File, file + ": this is no calibration of an ion-selective electrode, or it is damaged (" +
                                   error.what() + ")");
    }
    if (state.IonIndex == CustomIonRow && ionOfSettings != CustomIonRow && !arguments.Has(WeightOption.name))
        Refuse(ExitCode::Usage, file +
                                    ": it is of an ion of your own, whose molar mass the file does not hold; give "
                                    "it by --weight or --settings");
}

}  // namespace kelvo
