#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fstream>
#include <optional>
#include <set>

#include "batch/Commands.h"
#include "batch/Failure.h"
#include "batch/Report.h"
#include "batch/Rows.h"
#include "calibration/CaliSession.h"
#include "calibration/Calibration.h"
#include "calibration/CalibrationContext.h"
#include "calibration/CalibrationStandards.h"
#include "calibration/CalibrationState.h"
#include "calibration/Potentiometry.h"
#include "core/Clock.h"
#include "core/Paths.h"
#include "core/StateOf.h"
#include "statistics/Figures.h"
#include "tables/TableExport.h"
#include "text/Files.h"
#include "text/Number.h"

namespace kelvo {
namespace {

/// Draws the curve that the samples are read off, as the entries of "Option" do.
struct CurveRow {
    const char* name;
    bool (CaliSession::*show)();
};
constexpr CurveRow Curves[] = {
    {"line", &CaliSession::ShowLinear},
    {"segments", &CaliSession::ShowPartlyLinear},
    {"quadratic", &CaliSession::ShowBestCurve},
    {"low-end", &CaliSession::ShowLowEnd},
};

void DrawCurve(StateOf<CalibrationState, const Paths> state, const std::string& name, const Streams& streams) {
    CalibrationState& calibration = state;
    for (const CurveRow& curve : Curves) {
        if (name != curve.name) continue;
        if (calibration.CaliPoints == 1 && curve.show != &CaliSession::ShowLinear)
            Refuse(ExitCode::NoResult, "a calibration of one point has a line alone");
        KeptMessages messages;
        if (!(CaliSession(state, messages).*curve.show)())
            Refuse(ExitCode::NoResult,
                   curve.show == &CaliSession::ShowLowEnd ? "the standards have no low-end fit" : messages.Take());
        if (calibration.PartlyLinearFit == 1 && curve.show == &CaliSession::ShowBestCurve)
            streams.Note("two points have no best-fit curve: they are joined by a straight segment");
        const std::string lasting = LastingStatus(calibration, *CalibrationInUse(state).Get());
        if (!lasting.empty()) streams.Note(lasting);
        const std::string expired = ExpiredText(calibration.Told, DayText(SystemClock().Now()));
        if (!expired.empty()) streams.Note(expired);
        if (calibration.LinearFit == 1 && calibration.CaliSlope == 0)
            Refuse(ExitCode::NoResult, "the slope is 0: no concentration follows from it");
        return;
    }
    Refuse(ExitCode::Usage, "--curve takes line, segments, quadratic or low-end");
}

const std::vector<std::string> PotentialNames = {"mV", "E (mV)", "E", "potential"};

/// Column of the potentials by the option, else by its name, else the only one. Whether the first line counts as names
/// follows from it: only a name that is known, or that the option tells, makes it so. A mistyped first reading is none.
std::size_t PotentialColumn(RowsHead& head, const std::optional<std::string>& wanted) {
    if (wanted) {
        if (const auto named = ColumnNamed(head, {*wanted})) return *named;
        const auto number = NumberOf(*wanted);
        const auto count = static_cast<double>(head.fields.size());
        if (!number || *number < 1 || *number > count || *number != static_cast<double>(static_cast<int>(*number)))
            Refuse(ExitCode::Usage, "there is no column '" + *wanted + "' in the input");
        const auto column = static_cast<std::size_t>(*number) - 1;
        head.named = std::any_of(PotentialNames.begin(), PotentialNames.end(),
                                 [&](const std::string& name) { return EqualNoCase(name, head.fields[column]); });
        return column;
    }
    if (const auto named = ColumnNamed(head, PotentialNames)) return *named;
    head.named = false;
    if (head.fields.size() == 1) return 0;
    Refuse(ExitCode::Usage,
           "which of the " + std::to_string(head.fields.size()) +
               " columns holds the potentials? --column tells it; the decimal mark of a number is a point");
}

/// Where the potentials come from.
std::string SourceOf(const Arguments& arguments) {
    const auto& words = arguments.Words();
    return words.size() > 1 ? words[1] : std::string(StandardInput);
}

/// A row on its way out.
struct Worked {
    std::string logC, molar, ppm, low, high, remark;
    bool refused = false;
};

/// Works potentials out and writes rows.
class Measurement {
 public:
    Measurement(StateOf<CalibrationState, const Paths> state, const Arguments& arguments, const Streams& streams)
        : calibration_(CalibrationInUse(state).Get()),
          streams_(streams),
          json_(arguments.Has(JsonOption.name)),
          celsius_(CelsiusOf(arguments, "--temperature")),
          wanted_(arguments.Value("--column")),
          unit_(calibration_->Unit()),
          source_(SourceOf(arguments)) {}

    ExitCode Run() {
        LineReader lines(streams_.in);
        while (const auto line = lines.Next()) {
            if (lines.Number() == 1 && IsUtf16(*line)) Refuse(ExitCode::File, Source() + WhyNoUtf16);
            if (Trimmed(*line).empty() && !lines.TooLong()) continue;
            const bool named = !begun_ && Begin(*line);
            if (!named) Row(*line, lines);
            if (!streams_.out) return ExitCode::File;
            // Whoever waits at the other end of a pipe gets each row as soon as no more is there to be read.
            if (lines.Drained()) streams_.out.flush();
        }
        if (streams_.in.bad()) Refuse(ExitCode::File, Source() + "it could not be read");
        if (rows_ == 0) Refuse(ExitCode::NoResult, Source() + "there are no potentials");
        if (refused_ == 0) return ExitCode::Done;
        streams_.Note(std::to_string(refused_) + " of " + std::to_string(rows_) + " rows have no result");
        return ExitCode::RowsRefused;
    }

 private:
    std::string Source() const { return (source_ == StandardInput ? "standard input" : source_) + ": "; }

    /// @return whether the first line names the columns
    bool Begin(std::string_view line) {
        begun_ = true;
        head_ = HeadOf(line);
        column_ = PotentialColumn(head_, wanted_);
        if (json_) return head_.named;
        if (head_.named) {
            out_ = line;
        } else if (head_.fields.size() == 1) {
            out_ = "mV";
        } else {
            for (std::size_t i = 0; i < head_.fields.size(); ++i)
                out_ += (i > 0 ? std::string(1, head_.separator) : std::string()) +
                        (i == column_ ? std::string("mV") : "Column " + std::to_string(i + 1));
        }
        for (const std::string& name : {std::string("LogC"), std::string("mol/L"), std::string("ppm"),
                                        "95 % from (" + unit_ + ")", "95 % to (" + unit_ + ")", std::string("Remark")})
            Append(name);
        End();
        return head_.named;
    }

    void Row(std::string_view line, const LineReader& lines) {
        ++rows_;
        const bool simple = head_.fields.size() == 1 && line.find_first_of("\",;\t") == std::string_view::npos;
        // Most rows are one number, which needs no taking apart.
        if (simple)
            fields_.assign(1, std::string(Trimmed(line)));
        else
            SplitFields(line, head_.separator, fields_);
        double potential = 0;
        std::string fault = FaultOf(line, lines.TooLong(), potential);
        if (!fault.empty() && rows_ == 1 && !head_.named)
            fault += ", and no name that is known; --column takes any other";
        const bool shown = fields_.size() == head_.fields.size() && !lines.TooLong();
        if (!shown && head_.fields.size() == 1) fields_.assign(1, std::string(Trimmed(line)));
        fields_.resize(head_.fields.size());
        Work(potential, std::move(fault));
        if (worked_.refused) {
            ++refused_;
            streams_.Note("line " + std::to_string(lines.Number()) + ": " + worked_.remark);
        } else if (!worked_.remark.empty() && worked_.remark != remarkBefore_) {
            remarkBefore_ = worked_.remark;
            TellNewRemarks(lines.Number());
        }
        json_ ? WriteObject(lines.Number()) : WriteLine(shown ? line : std::string_view());
    }

    /// Tells each part of a remark at the first row that has it.
    void TellNewRemarks(long line) {
        constexpr std::size_t MostRemarks = 100;
        constexpr std::string_view Between = "; ";
        std::string_view rest = worked_.remark;
        while (!rest.empty()) {
            const std::size_t end = std::min(rest.find(Between), rest.size());
            const std::string part(rest.substr(0, end));
            if (toldRemarks_.size() < MostRemarks && toldRemarks_.insert(part).second)
                streams_.Note("line " + std::to_string(line) + ": " + part);
            rest.remove_prefix(std::min(end + Between.size(), rest.size()));
        }
    }

    /// Why the fields are no row with a potential; empty when they are, and the potential has been taken.
    std::string FaultOf(std::string_view line, bool tooLong, double& potential) const {
        if (tooLong) return "the line is longer than " + std::to_string(LineReader::LongestLine) + " bytes";
        if (fields_.size() != head_.fields.size()) {
            if (head_.fields.size() == 1) return WhyNoNumber(line);
            return "the line has " + std::to_string(fields_.size()) + (fields_.size() == 1 ? " field" : " fields") +
                   ", the first one " + std::to_string(head_.fields.size());
        }
        const auto number = NumberOf(fields_[column_]);
        if (!number) return WhyNoNumber(fields_[column_]);
        potential = *number;
        return {};
    }

    void Work(double potential, std::string fault) {
        worked_.refused = true;
        for (std::string* text : {&worked_.logC, &worked_.molar, &worked_.ppm, &worked_.low, &worked_.high})
            text->clear();
        worked_.remark = std::move(fault);
        if (!worked_.remark.empty()) return;
        const auto e = static_cast<float>(potential);
        const auto result = PotentialToSample(*calibration_, messages_, e);
        if (!result) {
            worked_.remark = messages_.Take();
            return;
        }
        worked_.refused = false;
        worked_.logC = result->LogCText;
        worked_.molar = result->MolarText;
        if (calibration_->ion != NoIon) worked_.ppm = result->PpmText;
        if (IsEmptyRow(*calibration_, e)) {
            worked_.remark = SampleRemark(*calibration_, 0, e);
            return;
        }
        Uncertainty told = calibration_->uncertainty.Of(double{e}, celsius_);
        const double value = calibration_->ion != NoIon ? result->ppm : std::pow(10.0, result->LogC);
        told.Hold(value);
        worked_.remark = std::move(told.words);
        if (!told.interval) return;
        const auto [low, high] = *told.interval;
        const IntervalTexts texts = WithInterval(value, low, high);
        worked_.low = texts.low;
        worked_.high = texts.high;
    }

    void AppendField(std::string_view field) {
        // A field is quoted for what parts fields here, too.
        if (head_.separator != ',' && field.find(head_.separator) != std::string_view::npos)
            out_.append("\"").append(field).append("\"");
        else
            AppendCsvField(out_, field);
    }

    void Append(std::string_view field) {
        out_ += head_.separator;
        AppendField(field);
    }

    void End() {
        out_ += '\n';
        streams_.out.write(out_.data(), static_cast<std::streamsize>(out_.size()));
        out_.clear();
    }

    /// @param line  the row as it was read; empty when it does not fit under the heads
    void WriteLine(std::string_view line) {
        out_ = head_.fields.size() == 1 ? Trimmed(line) : line;
        if (line.empty())
            for (std::size_t i = 0; i < fields_.size(); ++i)
                i > 0 ? Append(fields_[i]) : AppendField(fields_[i]);
        // Numbers need no quotes.
        for (const std::string* text : {&worked_.logC, &worked_.molar, &worked_.ppm, &worked_.low, &worked_.high})
            (out_ += head_.separator) += *text;
        Append(worked_.remark);
        End();
    }

    void WriteObject(long number) {
        out_ = "{\"line\": " + std::to_string(number);
        if (head_.named && head_.fields.size() > 1) {
            out_ += ", \"row\": {";
            for (std::size_t i = 0; i < fields_.size(); ++i)
                out_.append(i > 0 ? ", " : "")
                    .append(JsonString(head_.fields[i]))
                    .append(": ")
                    .append(JsonCell(fields_[i]));
            out_ += '}';
        }
        const auto member = [&](const char* name, const std::string& value) {
            out_.append(", \"").append(name).append("\": ").append(value);
        };
        member("mV", JsonCell(fields_[column_]));
        member("logC", JsonCell(worked_.logC));
        member("molar", JsonCell(worked_.molar));
        member("ppm", JsonCell(worked_.ppm));
        member("low", JsonCell(worked_.low));
        member("high", JsonCell(worked_.high));
        member("unit", JsonString(unit_));
        member("remark", JsonString(worked_.remark));
        out_ += '}';
        End();
    }

    std::shared_ptr<const Calibration> calibration_;
    const Streams& streams_;
    bool json_;
    std::optional<double> celsius_;
    std::optional<std::string> wanted_;
    std::string unit_;
    std::string source_;

    KeptMessages messages_;
    RowsHead head_;
    std::size_t column_ = 0;
    bool begun_ = false;
    long rows_ = 0, refused_ = 0;
    Worked worked_;
    std::set<std::string> toldRemarks_;
    std::string remarkBefore_;
    std::vector<std::string> fields_;
    std::string out_;
};

}  // namespace

ExitCode RunMeasure(const Arguments& arguments, const Streams& streams) {
    const std::string calibration = arguments.Words().front(), potentials = SourceOf(arguments);
    if (calibration == StandardInput && potentials == StandardInput)
        Refuse(ExitCode::Usage, "the calibration and the potentials cannot both come from standard input");
    BatchState state = StateFor(arguments);
    OpenCalibration(state, calibration, streams.in, arguments);
    DrawCurve(state, arguments.Value("--curve").value_or("line"), streams);
    if (potentials == StandardInput) return Measurement(state, arguments, streams).Run();
    if (const std::string why = WhyNoPlainFile(potentials); !why.empty())
        Refuse(ExitCode::File, potentials + ": " + why);
    std::ifstream file(IsDescriptor(potentials) ? potentials : FindFile(potentials), std::ios::binary);
    if (!file.is_open()) Refuse(ExitCode::File, potentials + ": " + std::strerror(errno));
    return Measurement(state, arguments, {file, streams.out, streams.err}).Run();
}

}  // namespace kelvo
