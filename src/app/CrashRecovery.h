#pragma once

#include <string>
#include <vector>

#include "core/RecoveryFiles.h"
#include "kit/AppContext.h"

namespace kelvo {

/// Keeps what is not saved when the program ends otherwise than by its own way out, and tells of it at the next start.
/// It looks after the calibration in hand (of an entry in progress the points that are in), the boxes of an addition
/// screen and the rows of the data table itself; for the rest it asks whoever is on `AppContext::unsaved`.
class CrashRecovery {
 public:
    using End = RecoveryFiles::End;

    /// @param folders  where files are kept, in the order in which the folders are tried
    CrashRecovery(AppContext& context, std::vector<std::string> folders);

    /// Keeps everything. What no folder takes is told before the end, with the offer to try again, until it is kept
    /// or given up.
    void Keep(End end);
    /// The same where no box can be shown, or where the session may still go on.
    void KeepInSilence(End end);
    /// A failure that nothing has caught: the link is stopped, everything kept, the failure reported, the program
    /// ended.
    void EndByFailure(const std::string& text);
    /// Tells at the start which files earlier ends have left, until it has been read.
    void Report();

 private:
    RecoveryFiles::Outcome KeepAll(End end);

    AppContext& context_;
    RecoveryFiles kept_;
    UnsavedWork::Registration calibration_, phCalibration_, addition_, table_;
};

}  // namespace kelvo
