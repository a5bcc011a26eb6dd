#pragma once

#include <optional>
#include <string>

#include "ph/RecordingJournal.h"
#include "ph/RecordingQuality.h"
#include "text/GrowingFile.h"
#include "text/RuntimeError.h"

namespace kelvo {

/// Puts every row of a recording on the disk before the next: into the live file the analyst chose, and into a journal
/// where there is none, or as long as the live file does not take its rows. Rows that could not be written anywhere are
/// written with the next row, in order and once. What is known of a row beyond its cells goes into the file beside.
class RecordingKeeper {
 public:
    explicit RecordingKeeper(std::string journalFolder, FactsText facts = {})
        : facts_(std::move(facts)), journal_(std::move(journalFolder)) {}

    /// @param liveFile empty when the analyst declined one
    /// @param head     head and column heads of the table file, in the code page
    void Begin(RecordingKind kind, const DateTime& started, std::string liveFile, std::string head);
    /// @param row cells, UTF-8
    void Add(const std::string& row, const RowFacts& facts = {});
    /// Tries again what could not be written.
    void Flush();
    enum class End {
        Saved,     ///< nothing is kept beside
        Declined,  ///< what no file holds is put aside and can be brought back
    };
    void Done(End end);

    bool Live() const { return live_.Open(); }
    /// The live file; another than at the start when that one had to be left to another program.
    const std::string& LivePath() const { return live_.Path(); }
    /// Whether every row stands in the live file.
    bool LiveWhole() const { return live_.Open() && live_.Whole(); }
    /// Whether the live file may be written at an end of the program, where nobody can be told what it replaces.
    bool LiveStandsAsLeft() const { return live_.Open() && live_.StandsAsLeft(); }
    int Rows() const { return rows_; }
    /// Rows that the live file does not hold yet.
    int Waiting() const { return Live() ? rows_ - liveRows_ : 0; }
    /// Whether the rows that wait would outlive the program.
    bool Safe() const { return Live() ? LiveWhole() || journal_.Whole() : journal_.Whole(); }

    /// The whole recording as a table file, for an end of the program; empty when it is safe already.
    std::string Unsafe() const { return rows_ == 0 || Safe() ? std::string() : all_; }
    /// The file beside it.
    std::string FactsBytes() const { return FactsBytes(live_.Path()); }

    /// A failure to be told.
    struct Failure {
        RuntimeError error;
        std::string file;
    };
    /// The first failure since writing last succeeded, once.
    std::optional<Failure> TakeFailure();
    /// The live file was changed by another program or hand; told once.
    std::optional<GrowingFile::Change> TakeChange() { return live_.TakeChange(); }

 private:
    template <typename Step>
    bool Try(const std::string& file, bool& failing, Step step);
    void Write(const std::string& piece);
    void KeepBeside(const std::string& piece);
    std::string FactsBytes(const std::string& table) const;

    RecordingKind kind_ = RecordingKind::Ph;
    DateTime started_;
    FactsText facts_;
    std::string all_;    ///< head and rows
    std::string lines_;  ///< of the file beside, without its heading
    GrowingFile live_;
    FactsBeside liveFacts_;
    RecordingJournal journal_;
    int rows_ = 0, liveRows_ = 0;
    bool liveFails_ = false, journalFails_ = false, factsFail_ = false;
    std::optional<Failure> failure_;
};

}  // namespace kelvo
