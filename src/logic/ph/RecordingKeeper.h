#pragma once

#include <optional>
#include <string>

#include "ph/RecordingJournal.h"
#include "text/GrowingFile.h"
#include "text/RuntimeError.h"

namespace kelvo {

/// Puts every row of a recording on the disk before the next: into the live file the analyst chose, and into a journal
/// where there is none, or as long as the live file does not take its rows. Rows that could not be written anywhere are
/// written with the next row, in order and once.
class RecordingKeeper {
 public:
    explicit RecordingKeeper(std::string journalFolder) : journal_(std::move(journalFolder)) {}

    /// @param liveFile empty when the analyst declined one
    /// @param head     head and column heads of the table file, in the code page
    void Begin(RecordingKind kind, const DateTime& started, std::string liveFile, std::string head);
    /// @param row cells, UTF-8
    void Add(const std::string& row);
    /// Tries again what could not be written.
    void Flush();
    /// The recording is saved or declined: nothing is kept beside.
    void Done();

    bool Live() const { return live_.Open(); }
    /// Whether every row stands in the live file.
    bool LiveWhole() const { return live_.Open() && live_.Whole(); }
    int Rows() const { return rows_; }
    /// Rows that the live file does not hold yet.
    int Waiting() const { return Live() ? rows_ - liveRows_ : 0; }
    /// Whether the rows that wait would outlive the program.
    bool Safe() const { return Live() ? LiveWhole() || journal_.Whole() : journal_.Whole(); }

    /// The whole recording as a table file, for an end of the program; empty when it is safe already.
    std::string Unsafe() const { return rows_ == 0 || Safe() ? std::string() : all_; }

    /// A failure to be told.
    struct Failure {
        RuntimeError error;
        std::string file;
    };
    /// The first failure since writing last succeeded, once.
    std::optional<Failure> TakeFailure();

 private:
    template <typename Step>
    bool Try(const std::string& file, bool& failing, Step step);
    void KeepBeside(const std::string& piece);

    RecordingKind kind_ = RecordingKind::Ph;
    DateTime started_;
    std::string all_;  ///< head and rows
    GrowingFile live_;
    RecordingJournal journal_;
    int rows_ = 0, liveRows_ = 0;
    bool liveFails_ = false, journalFails_ = false;
    std::optional<Failure> failure_;
};

}  // namespace kelvo
