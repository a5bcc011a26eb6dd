#include "tables/ReportedResult.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <numeric>

#include "calibration/DriftCheck.h"
#include "calibration/SampleUncertainty.h"
#include "statistics/Figures.h"
#include "statistics/StudentT.h"
#include "tables/ControlSample.h"
#include "tables/RowUncertainty.h"
#include "tables/TableExport.h"
#include "text/Number.h"

namespace kelvo {
namespace {

constexpr int SampleCol = 1, MvCol = 3, PpmCol = 4, MolarCol = 5, CelsiusCol = 6, AdditionPpmCol = 11;
constexpr double Percent = 100;
/// % of a concentration that a small step of its LogC is.
constexpr double PercentOfDecade = Percent * std::numbers::ln10;
/// Rows that are enough to tell the repeatability of their sample, and degrees of freedom that are enough elsewhere.
constexpr int EnoughRows = 4, EnoughFreedom = 4;
/// The estimate that parts share which rest on the standards' scatter.
constexpr int StandardsScatter = 1;

bool IsAdditionTable(const DataTable& table) {
    return table.Cols() > AdditionPpmCol && table.Cell(0, AdditionPpmCol) == "Sample (ppm)";
}

std::string CountText(int n, const char* one, const char* many) {
    return std::to_string(n) + " " + (n == 1 ? one : many);
}

/// What the samples of one calibration share: its curve, read out of its text once, and the scatter of repeated
/// potentials, as the samples up to now have it together.
struct Pool {
    std::optional<SampleUncertainty> curve;
    double squares = 0;  ///< mV²
    int freedom = 0, samples = 0;

    explicit Pool(const std::string& line) : curve(SampleUncertainty::OfLine(line)) {}

    void Take(const Replicates& own) {
        squares += (own.n - 1) * own.deviation * own.deviation;
        freedom += own.n - 1;
        ++samples;
    }
    double Deviation() const { return std::sqrt(squares / freedom); }
};
using Pools = std::map<std::string, Pool>;  ///< by the calibration that the samples were read off

/// Works one result out.
class Working {
 public:
    Working(const DataTable& table, ReportedResult& result) : table_(table), result_(result) {}

    void WorkOut(Pools& pools) {
        TakeRows(pools);
        TakeCorrections();
        TakeSpread();
        const bool refused = IsRefused();
        if (result_.n == 0) {
            result_.why = result_.rows.empty() || !AllStruck() ? "no concentration" : "all rows are struck out";
        } else if (refused) {
            result_.why = "no interval goes with " + std::string(result_.n == 1 ? "its row" : "one of its rows");
        } else if (Pool* const common = CommonCurve(pools); common != nullptr && common->curve) {
            OffTheCurve(*common->curve, *common);
        } else if (result_.n == 1) {
            TakeRowsOwn();
        } else {
            OfScatterAlone();
        }
        Finish();
    }

 private:
    const RowFacts& FactsOf(const ResultRow& row) const { return table_.Facts(row.row); }

    void TakeRows(Pools& pools) {
        const int col = IsAdditionTable(table_) ? AdditionPpmCol : result_.unit == "mol/L" ? MolarCol : PpmCol;
        RowFacts remarks;
        for (ResultRow& row : result_.rows) {
            row.value = CellNumber(table_.Cell(row.row, col));
            if (!IsAdditionTable(table_)) row.mv = CellNumber(table_.Cell(row.row, MvCol));
            row.struck = FactsOf(row).Get(fact::Struck);
            TakeDrift(row, pools);
            result_.known = result_.known || !FactsOf(row).Empty();
            if (!row.struck.empty() || !row.value) continue;
            counted_.push_back(&row);
            values_.push_back(*row.value);
            if (row.mv) potentials_.push_back(*row.mv);
            remarks.Remark(FactsOf(row).Get(fact::Remark));
        }
        result_.n = static_cast<int>(values_.size());
        if (const std::string words = remarks.Get(fact::Remark); !words.empty()) Say(words);
        if (result_.n == 0) return;
        result_.measured = std::accumulate(values_.begin(), values_.end(), 0.0) / result_.n;
    }

    /// The potential that bracketing gives a row counts in the place of its own, off the same curve.
    void TakeDrift(ResultRow& row, Pools& pools) {
        const RowFacts& facts = FactsOf(row);
        if (!row.struck.empty()) return;
        if (const std::string uncovered = facts.Get(fact::Uncovered); !uncovered.empty())
            Say("row " + std::to_string(row.row) + " NOT COVERED: " + uncovered);
        const auto corrected = CellNumber(facts.Get(fact::Corrected));
        if (!corrected || !row.mv) return;
        const std::string& line = facts.Get(fact::Line);
        const auto& curve = line.empty() ? std::nullopt : pools.try_emplace(line, line).first->second.curve;
        const auto concentration = curve ? curve->Concentration(*corrected) : std::nullopt;
        if (!concentration) return;
        row.mv = corrected;
        row.value = concentration;
        row.correction = facts.Get(fact::Correction);
        Say("row " + std::to_string(row.row) + " drift corrected by " + row.correction);
    }

    bool AllStruck() const {
        return std::all_of(result_.rows.begin(), result_.rows.end(),
                           [](const ResultRow& r) { return !r.struck.empty(); });
    }

    void TakeCorrections() {
        for (const ResultRow& row : result_.rows) {
            const RowFacts& facts = FactsOf(row);
            if (const auto factor = CellNumber(facts.Get(fact::Dilution)); factor && *factor > 0)
                result_.dilution = *factor;
            if (const auto blank = CellNumber(facts.Get(fact::Blank))) result_.blank = *blank;
            if (const auto u = CellNumber(facts.Get(fact::BlankU)); u && *u > 0) result_.blankDeviation = *u;
        }
    }

    void TakeSpread() {
        result_.spread = Summarise(values_);
        const bool byPotential = potentials_.size() == values_.size();
        result_.grubbs = GrubbsTest(byPotential ? potentials_ : values_);
        if (result_.grubbs && result_.grubbs->Outlier()) {
            counted_[result_.grubbs->suspect]->suspect = true;
            Say("Grubbs: row " + std::to_string(counted_[result_.grubbs->suspect]->row) + " is an outlier");
        }
    }

    /// A sample that was refused an interval when it was measured: the scatter of its rows is no way round that.
    bool IsRefused() const {
        return !IsAdditionTable(table_) && std::any_of(counted_.begin(), counted_.end(), [&](const ResultRow* row) {
            return FactsOf(*row).KnownWhenMeasured() && FactsOf(*row).Get(fact::Low).empty();
        });
    }

    /// What goes with the one calibration that all rows were read off; none where there are several.
    Pool* CommonCurve(Pools& pools) const {
        if (potentials_.size() != values_.size()) return nullptr;
        const std::string& line = FactsOf(*counted_.front()).Get(fact::Line);
        const bool common = !line.empty() && std::all_of(counted_.begin(), counted_.end(), [&](const ResultRow* row) {
            return FactsOf(*row).Get(fact::Line) == line;
        });
        return common ? &pools.try_emplace(line, line).first->second : nullptr;
    }

    void OffTheCurve(const SampleUncertainty& curve, Pool& pool) {
        const double mean =
            std::accumulate(potentials_.begin(), potentials_.end(), 0.0) / static_cast<double>(potentials_.size());
        const auto read = curve.ReadOff(mean);
        const auto concentration = curve.Concentration(mean);
        if (!read || !concentration) {
            result_.why = "the calibration tells no interval";
            return;
        }
        result_.measured = *concentration;
        const std::string standards = CountText(read->standards, "standard", "standards") + ", s " +
                                      WithPlacesOf(read->scatter, read->scatter) + " mV";
        result_.budget.Add(
            {"calibration line", standards, PercentOfDecade * read->deviation, read->freedom, StandardsScatter});
        AddRepeatability(*read, pool);
        AddStandards();
        AddTemperature(read->logC);
        AddDrift(*read);
        AddResolution(*read);
    }

    void AddRepeatability(const SampleUncertainty::Reading& read, Pool& pool) {
        const auto own = Summarise(potentials_);
        const bool scattersMore = own && ScattersMore(*own, read, pool);
        if (own && !scattersMore) pool.Take(*own);
        Contribution part{.name = "repeatability", .source = {}};
        double scatter = read.scatter;
        if (own && (scattersMore || own->n >= EnoughRows)) {
            scatter = own->deviation;
            part.freedom = own->n - 1;
            part.source = CountText(own->n, "row", "rows") + " of this sample" +
                          (scattersMore ? ", which scatter more than others" : "");
        } else if (pool.freedom >= EnoughFreedom) {
            scatter = pool.Deviation();
            part.freedom = pool.freedom;
            part.source = "pooled from " + CountText(pool.samples, "sample", "samples");
        } else {
            part.freedom = read.freedom;
            part.estimate = StandardsScatter;
            part.source = "taken to be that of the standards";
        }
        part.source += ", s " + WithPlacesOf(scatter, scatter) + " mV";
        part.u = PercentOfDecade * scatter / read.mvPerDecade / std::sqrt(result_.n);
        result_.budget.Add(part);
    }

    /// Than the samples before it, or than the standards while these are too few.
    static bool ScattersMore(const Replicates& own, const SampleUncertainty::Reading& read, const Pool& before) {
        constexpr double Sure = 0.98;
        const bool pooled = before.freedom >= EnoughFreedom;
        const double ratio = own.deviation / (pooled ? before.Deviation() : read.scatter);
        return ratio * ratio > FisherF(own.n - 1, pooled ? before.freedom : read.freedom, Sure);
    }

    void AddStandards() {
        const RowFacts& facts = FactsOf(*counted_.front());
        const auto relative = CellNumber(facts.Get(fact::StandardsU));
        const std::string told = facts.Get(fact::Standards);
        std::string source =
            relative ? "stock and volumes, " + facts.Get(fact::StandardsU) + " %" : "not told, taken as exact";
        if (!told.empty()) source += " (" + told + ")";
        result_.budget.Add({"standards", source, relative ? std::abs(*relative) : 0});
    }

    /// A slope goes with the absolute temperature: E = Eo + S·LogC read off at another one is wrong by LogC·ΔT/T.
    /// Within these limits any value is as likely.
    void AddTemperature(double logC) {
        Contribution part{.name = "temperature", .source = "of sample or calibration not told"};
        const auto calibration = CellNumber(FactsOf(*counted_.front()).Get(fact::CaliCelsius));
        double sum = 0;
        bool told = calibration.has_value();
        for (const ResultRow* row : counted_) {
            const auto celsius = CellNumber(table_.Cell(row->row, CelsiusCol));
            told = told && celsius;
            sum += celsius.value_or(0);
        }
        constexpr double Kelvin = 273.15, Rectangular = std::numbers::sqrt3;
        if (told && *calibration > -Kelvin) {
            const double difference = std::abs(sum / result_.n - *calibration);
            part.source = WithPlaces(difference, 1) + " °C from the calibration, slope by Nernst";
            part.u = PercentOfDecade * std::abs(logC) * difference / (*calibration + Kelvin) / Rectangular;
        }
        result_.budget.Add(part);
    }

    /// Common to the rows of a sample: more of them do not lessen it.
    void AddDrift(const SampleUncertainty::Reading& read) {
        double sum = 0;
        bool corrected = false, told = false;
        for (const ResultRow* row : counted_) {
            const auto u = CellNumber(FactsOf(*row).Get(fact::DriftU));
            sum += u.value_or(0);
            told = told || u;
            corrected = corrected || !FactsOf(*row).Get(fact::Corrected).empty();
        }
        if (!told) return;
        const double u = sum / result_.n;
        Contribution part{
            "drift", (corrected ? "of the correction, " : "within the checks around it, ") + WithPlacesOf(u, u) + " mV",
            PercentOfDecade * u / read.mvPerDecade};
        if (corrected) {
            part.freedom = read.freedom;
            part.estimate = StandardsScatter;
        }
        result_.budget.Add(part);
    }

    /// The last place of a potential. It is part of every scatter, and what is left where nothing scatters.
    void AddResolution(const SampleUncertainty::Reading& read) {
        constexpr double LastPlace = 0.01;  // mV
        const double u = LastPlace / std::sqrt(12.0);
        result_.budget.Add({"resolution", "potential to 0.01 mV", PercentOfDecade * u / read.mvPerDecade});
    }

    void TakeRowsOwn() {
        const RowFacts& facts = FactsOf(*counted_.front());
        const auto low = CellNumber(facts.Get(fact::Low)), high = CellNumber(facts.Get(fact::High));
        if (!low || !high || !(*low <= result_.measured) || !(result_.measured <= *high)) {
            result_.why = "nothing is known of its row but the value";
            return;
        }
        own_ = ReportedResult::Interval{*low, *high};
        result_.basis = facts.Get(fact::Basis);
    }

    /// Rows of different calibrations, of none that is known, or additions: what they have in common is not in it.
    void OfScatterAlone() {
        const Replicates& spread = *result_.spread;
        if (!(result_.measured > 0)) {
            result_.why = "the concentrations are not above 0";
            return;
        }
        result_.budget.Add({"scatter of the rows",
                            CountText(spread.n, "row", "rows") + ", s " +
                                WithPlacesOf(spread.deviation, spread.deviation) + " " + result_.unit,
                            Percent * spread.deviation / std::sqrt(spread.n) / result_.measured, spread.n - 1});
        own_ = ReportedResult::Interval{spread.low, spread.high};
        Say(IsAdditionTable(table_)
                ? "the interval is the scatter of the rows; what volumes and slope add is not in it"
                : "the interval is the scatter of the rows; what the calibration adds is not in it");
    }

    void Finish() {
        result_.value = (result_.measured - result_.blank) * result_.dilution;
        if (result_.budget.Parts().empty() && !own_) return;
        if (result_.blankDeviation > 0 && result_.measured > 0)
            result_.budget.Add(
                {"blank", "s " + WithPlacesOf(result_.blankDeviation, result_.blankDeviation) + " " + result_.unit,
                 Percent * result_.blankDeviation / result_.measured});
        double low = 0, high = 0;
        if (own_) {
            // The blank's part adds to both distances as squares do.
            const double blank = StudentT(1000000) * result_.blankDeviation;
            low = result_.measured - std::hypot(result_.measured - own_->low, blank);
            high = result_.measured + std::hypot(own_->high - result_.measured, blank);
        } else {
            const double decades = result_.budget.HalfWidth() / PercentOfDecade;
            constexpr double MostDecades = 2;
            if (!(decades <= MostDecades)) {
                result_.why = "uncertain by more than a factor of 100 (95 %)";
                result_.budget = {};
                return;
            }
            low = result_.measured * std::pow(10.0, -decades);
            high = result_.measured * std::pow(10.0, decades);
        }
        const auto corrected = [&](double c) { return (c - result_.blank) * result_.dilution; };
        result_.interval = ReportedResult::Interval{corrected(low), corrected(high)};
        result_.uncertainty = result_.budget.Combined() / Percent * result_.measured * result_.dilution;
        if (result_.blank != 0 && result_.interval->low <= 0) {
            result_.interval->low = 0;
            Say("not to be told from the blank");
        }
    }

    void Say(const std::string& words) { result_.words += (result_.words.empty() ? "" : "; ") + words; }

    const DataTable& table_;
    ReportedResult& result_;
    std::vector<ResultRow*> counted_;
    std::vector<double> values_, potentials_;
    std::optional<ReportedResult::Interval> own_;
};

/// The unit that the intervals of the rows are in, and with them the result.
std::string UnitOf(const DataTable& table, const std::vector<ResultRow>& rows) {
    for (const ResultRow& row : rows)
        if (table.Facts(row.row).Get(fact::Unit) == "mol/L") return "mol/L";
    return "ppm";
}

}  // namespace

bool HasResults(const DataTable& table) {
    return table.Cell(0, SampleCol) == "Sample Number" && (HoldsSamples(table) || IsAdditionTable(table));
}

std::vector<ReportedResult> ResultsOf(const DataTable& table) {
    std::vector<ReportedResult> results;
    if (!HasResults(table)) return results;
    std::map<std::string, std::size_t> places;
    for (int row = 1; row <= ExportRows(table); ++row) {
        // A standard that is measured again is no sample.
        if (!table.Facts(row).Get(fact::CheckStandard).empty()) continue;
        const std::string number = Trim(std::string(table.Cell(row, SampleCol)));
        const auto [at, fresh] =
            number.empty() ? std::pair{places.end(), true} : places.try_emplace(number, results.size());
        if (fresh) {
            results.emplace_back();
            results.back().sample = number.empty() ? "row " + std::to_string(row) : number;
        }
        results[number.empty() ? results.size() - 1 : at->second].rows.emplace_back().row = row;
    }
    Pools pools;
    for (ReportedResult& result : results) {
        result.unit = UnitOf(table, result.rows);
        Working(table, result).WorkOut(pools);
        result.TellRecovery(table);
    }
    for (ReportedResult& result : results)
        if (const auto spike = SpikeOf(result.sample))
            for (const ReportedResult& plain : results)
                if (plain.sample == spike->sample) result.TellSpike(plain, spike->added);
    return results;
}

void ReportedResult::TellRecovery(const DataTable& table) {
    if (n == 0) return;
    const auto at = [&](double ReportedResult::Interval::*bound) {
        return interval ? std::optional(*interval.*bound) : std::nullopt;
    };
    recovery = RecoveryText(table.Facts(rows.back().row), value, at(&Interval::low), at(&Interval::high));
}

void ReportedResult::TellSpike(const ReportedResult& plain, double added) {
    if (n == 0 || plain.n == 0 || plain.unit != unit) return;
    const auto percent = [&](double x) { return WithPlaces(Percent * x / added, 1); };
    recovery =
        "spike recovery " + percent(value - plain.value) + " % of " + TrimStr(added) + " added to " + plain.sample;
    if (!interval || !plain.interval) return;
    // The two are independent but for their calibration, which a difference has less of: the squares are on the safe
    // side.
    const double down = std::hypot(value - interval->low, plain.interval->high - plain.value);
    const double up = std::hypot(interval->high - value, plain.value - plain.interval->low);
    recovery += " (" + percent(value - plain.value - down) + " to " + percent(value - plain.value + up) + ")";
}

std::optional<double> ReportedResult::Deviation() const {
    return spread ? std::optional(spread->deviation * dilution) : std::nullopt;
}

std::optional<double> ReportedResult::RelativeDeviation() const {
    return spread && value > 0 ? std::optional(Percent * *Deviation() / value) : std::nullopt;
}

std::string ReportedResult::ValueText() const {
    if (n == 0) return {};
    if (interval) return WithInterval(value, interval->low, interval->high).value;
    return spread ? WithPlacesOf(value, spread->deviation * dilution) : WithPlacesOf(value, std::abs(value) / 100);
}

std::string ReportedResult::LowText() const {
    return interval ? WithInterval(value, interval->low, interval->high).low : std::string();
}

std::string ReportedResult::HighText() const {
    return interval ? WithInterval(value, interval->low, interval->high).high : std::string();
}

std::string ReportedResult::Line() const {
    if (n == 0) return why;
    std::string line = ValueText() + " " + unit;
    if (!interval) return line + "; no 95 % interval: " + why + (recovery.empty() ? "" : "; " + recovery);
    line += ", " + LowText() + " to " + HighText() + " (95 %";
    line += (budget.Parts().empty() ? "" : ", " + budget.CoverageText()) + ")";
    return line + (recovery.empty() ? "" : "; " + recovery);
}

std::string ReportedResult::Holds() const {
    if (budget.Parts().empty()) return basis;
    constexpr double Least = 0.5;
    std::string text;
    for (std::size_t i = 0; i < budget.Parts().size(); ++i) {
        if (budget.Share(i) < Least) continue;
        text += (text.empty() ? "" : ", ") + budget.Parts()[i].name + " " + WithPlaces(budget.Share(i), 0) + " %";
    }
    return text;
}

}  // namespace kelvo
