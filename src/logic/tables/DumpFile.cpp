#include "tables/DumpFile.h"

#include "tables/TableFile.h"
#include "text/Files.h"
#include "text/Number.h"
#include "text/Records.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr int MostPoints = 200;
constexpr int MostChannels = 6;

int InRange(int value, int least, int most) {
    if (value < least || value > most) throw RuntimeError(ErrorNumber::Subscript);
    return value;
}

}  // namespace

const MethodFile SampleMethodFile = {"All Data(*.smp)|*.smp", ".smp",
                                     "SAMPLE ADDITION METHOD:", "SAMPLE ADDITION METHOD:"};
const MethodFile StandardMethodFile = {"All Data(*.std)|*.std", ".std",
                                       "STANDARD ADDITION METHOD:", "SATNDARD ADDITION METHOD:"};

std::string MethodDumpBytes(const MethodDump& dump) {
    RecordWriter writer;
    writer.Print(Str(dump.Ion));
    writer.Print(Str(dump.CommentHeight));
    writer.Print(dump.Comment);
    for (const std::string& box : dump.Box)
        writer.Print(box);
    return writer.Bytes();
}

void ReadMethodDump(MethodDump& dump, std::string_view bytes) {
    RecordReader reader(bytes);
    dump.Ion = InRange(ToInt16(Val(reader.Item())), NoIon, IonRows - 1);
    dump.CommentHeight = ToSingle(Val(reader.Item()));
    dump.Comment = reader.Item();
    if (reader.AtEnd()) return;
    for (std::string& box : dump.Box)
        box = reader.Item();
}

std::optional<std::string> SaveMethodDump(AppState& state, const MethodDump& dump, const MethodFile& method,
                                          Prompts& prompts, FileChooser& files) {
    const std::optional<std::string> chosen = files.Save({method.filter, state.DataPath, {}});
    if (!chosen || chosen->empty()) return std::nullopt;
    std::string name = *chosen;
    if (LastPart(name).find('.') == std::string::npos) name += method.extension;
    try {
        ReplaceKeepingBackup(FindFile(name), MethodDumpBytes(dump));
    } catch (const RuntimeError& error) {
        ShowFileError(prompts, error, "Saving", name);
        return std::nullopt;
    }
    return method.savedTitle + name;
}

std::optional<std::string> OpenMethodDump(AppState& state, MethodDump& dump, const MethodFile& method, Prompts& prompts,
                                          FileChooser& files) {
    const std::optional<std::string> chosen = files.Open({method.filter, state.DataPath, {}});
    if (!chosen || chosen->empty()) return std::nullopt;
    const std::string name = HasFolder(*chosen) ? *chosen : state.AppPath + *chosen;
    if (!FileExists(name)) {
        prompts.Message("File" + name + "Not Found.", {}, Icon::Exclamation);
        return method.openedTitle + name;
    }
    try {
        const std::string bytes = ReadWholeFile(FindFile(name));
        ReadMethodDump(dump, bytes);
    } catch (const RuntimeError& error) {
        ShowFileError(prompts, error, "Opening", name);
    }
    return method.openedTitle + name;
}

std::string RecordingDumpBytes(const RecordingDump& dump) {
    RecordWriter writer;
    for (const float number :
         {static_cast<float>(dump.PointCount), dump.ScaleSpan, static_cast<float>(dump.ChannelCount),
          static_cast<float>(dump.IntervalIndex), static_cast<float>(dump.ScaleIndex)})
        writer.Write(number);
    for (int j = 1; j <= dump.PointCount; ++j)
        for (int k = 0; k < dump.ChannelCount; ++k)
            writer.Write(dump.Recording.at(static_cast<std::size_t>(j)).at(static_cast<std::size_t>(k)));
    return writer.Bytes();
}

RecordingDump ReadRecordingDump(std::string_view bytes) {
    RecordReader reader(bytes);
    RecordingDump dump;
    dump.PointCount = static_cast<std::int16_t>(InRange(reader.Whole(), 0, MostPoints));
    dump.ScaleSpan = reader.Number();
    dump.ChannelCount = static_cast<std::int16_t>(InRange(reader.Whole(), 0, MostChannels));
    dump.IntervalIndex = static_cast<std::int16_t>(reader.Whole());
    dump.ScaleIndex = static_cast<std::int16_t>(reader.Whole());
    dump.Recording.resize(static_cast<std::size_t>(dump.PointCount) + 1);
    for (std::size_t j = 1; j < dump.Recording.size(); ++j)
        for (std::size_t k = 0; k < static_cast<std::size_t>(dump.ChannelCount); ++k) {
            if (reader.AtEnd()) return dump;
            dump.Recording[j][k] = reader.Number();
        }
    return dump;
}

}  // namespace kelvo
