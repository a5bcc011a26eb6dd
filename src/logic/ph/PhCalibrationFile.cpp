#include "ph/PhCalibrationFile.h"

#include <array>
#include <functional>
#include <utility>
#include <vector>

#include "core/Paths.h"
#include "core/Settings.h"
#include "core/StatusMessages.h"
#include "core/StoredWithCalibration.h"
#include "ph/PhCalibration.h"
#include "text/Files.h"
#include "text/Number.h"
#include "text/Records.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

/// Far above any calibration: a file of this size is something else and is not worth its memory.
constexpr std::size_t LargestFile = std::size_t{1} << 20;
constexpr int MaxBuffers = 4;  ///< of one electrode
constexpr const char* Filter = "All Data(*.Cli)|*.Cli";
constexpr const char* Section = "Latest Calibration Value";

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

/// The calibration of one pH electrode as it stands in a file.
struct PhChannel {
    std::string date, electrode;
    float temperature = 0;
    std::int16_t count = 0;
    std::vector<std::array<float, 3>> buffers;
};

float SingleText(RecordReader& reader) {
    return ToSingle(Val(reader.Text()));
}

void ReadHead(RecordReader& reader, PhChannel& channel) {
    channel.date = reader.Text();
    channel.temperature = SingleText(reader);
    channel.electrode = reader.Text();
    channel.count = ToInt16(Val(reader.Text()));
    if (channel.count < 0 || channel.count > MaxBuffers) throw RuntimeError(ErrorNumber::Subscript);
}

void ReadBuffers(RecordReader& reader, PhChannel& channel) {
    channel.buffers.assign(At(channel.count + 1), {});
    for (std::size_t j = 1; j < channel.buffers.size(); ++j) {
        channel.buffers[j][1] = SingleText(reader);
        channel.buffers[j][2] = SingleText(reader);
    }
}

}  // namespace

std::string PhBytes(const PhCalibration& phCalibration) {
    RecordWriter writer;
    for (std::size_t i = 1; i <= 2; ++i) {
        writer.Write(std::string_view(phCalibration.PhCaliDate[i]));
        writer.Write(std::string_view(Str(phCalibration.PhCaliTemp[i])));
        writer.Write(std::string_view(phCalibration.PhCaliElectrode[i]));
        writer.Write(std::string_view(Str(int{phCalibration.BufferCount[i]})));
    }
    for (std::size_t i = 1; i <= 2; ++i) {
        const auto& buffers = i == 1 ? phCalibration.Buffers1 : phCalibration.Buffers2;
        for (int j = 1; j <= phCalibration.BufferCount[i]; ++j)
            for (const std::size_t column : {std::size_t{1}, std::size_t{2}})
                writer.Write(std::string_view(Str(buffers.at(At(j))[column])));
    }
    return writer.Bytes();
}

void ReadPh(StateOf<PhCalibration, StoredWithCalibration> state, std::string_view bytes) {
    PhCalibration& phCalibration = state;
    StoredWithCalibration& stored = state;
    RecordReader reader(bytes);
    std::array<PhChannel, 2> channels;
    for (PhChannel& channel : channels)
        ReadHead(reader, channel);
    for (PhChannel& channel : channels)
        ReadBuffers(reader, channel);
    phCalibration.PhCaliUnsaved = false;
    for (std::size_t i = 1; i <= 2; ++i) {
        PhChannel& channel = channels[i - 1];
        phCalibration.PhCaliDate[i] = std::move(channel.date);
        phCalibration.PhCaliTemp[i] = channel.temperature;
        phCalibration.PhCaliElectrode[i] = channel.electrode;
        stored.FileElectrodeNum[i] = std::move(channel.electrode);
        phCalibration.BufferCount[i] = channel.count;
        if (channel.count > 0) (i == 1 ? phCalibration.Buffers1 : phCalibration.Buffers2) = std::move(channel.buffers);
    }
}

bool SavePhCalibration(StateOf<const Paths, const PhCalibration, StatusMessages> state, Prompts& prompts,
                       FileChooser& chooser) {
    const Paths& paths = state;
    const auto name = AskNameToSave(prompts, chooser,
                                    {.dialog = {Filter, paths.DataPath, {}},
                                     .ending = ".CLI",
                                     .use = std::bind_front(UpperInFolder, paths.DataPath)});
    if (!name) return false;
    try {
        ReplaceWholeFile(*name, PhBytes(state));
    } catch (const RuntimeError& error) {
        state.Get<StatusMessages>().StatusMessage =
            "The pH calibration could not be saved in " + *name + ": " + error.what() + ".";
        return false;
    }
    WriteSetting(Section, "LastCaliFile", *name, paths.IniPath);
    return true;
}

OpenOutcome OpenPhCalibration(StateOf<const Paths, PhCalibration, StoredWithCalibration> state, Prompts& prompts,
                              FileChooser& chooser, std::string fileName) {
    const Paths& paths = state;
    const OpenRequest request{.dialog = {Filter, paths.DataPath, {}},
                              .use = std::bind_front(UpperInFolder, paths.AppPath),
                              .known = std::move(fileName),
                              .limit = LargestFile};
    return AskAndRead(prompts, chooser, request,
                      [&](const std::string& bytes, const std::string&) { ReadPh(state, bytes); });
}

std::string ResolvePhCalibration(const std::string& iniPath, const std::string& appPath) {
    const std::string last = ReadSetting(Section, "LastCaliFile", iniPath);
    if (!last.empty() && FileExists(last)) return FindFile(last);
    return FindFile(appPath + ReadSetting(Section, "DefaultFile", iniPath));
}

OpenOutcome LoadLastPhCalibration(StateOf<const Paths, PhCalibration, StoredWithCalibration> state, Prompts& prompts,
                                  FileChooser& chooser) {
    const Paths& paths = state;
    return OpenPhCalibration(state, prompts, chooser, ResolvePhCalibration(paths.IniPath, paths.AppPath));
}

}  // namespace kelvo
