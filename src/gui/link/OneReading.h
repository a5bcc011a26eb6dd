#pragma once

#include <string>

#include "kit/AppContext.h"
#include "link/SampleReadingPresenter.h"

namespace kelvo {

/// A screen that has the reading dialog take one potential at a time and lends it no boxes.
class OneReading : public ReadingClient {
 public:
    bool TakesManySamples() const override { return false; }
    void ShowTemperature(const std::string&, const std::string&) override {}
    void ColourTemperature(int) override {}
    void ShowSecondElectrode(float, bool) override {}
    void ShowNoSecondElectrode() override {}
    void SampleTaken() override {}
    void ReadingCancelled() override {}
    void ShowReadingState(const ReadingState& state) override;

 protected:
    /// Opens the dialog and returns when it has been closed, with the potential taken or not.
    /// @return false when there is no interface, or the program has ended meanwhile
    bool ReadOne(AppContext& context);
    /// What was wrong with the potential when it was taken; empty: it was a live one.
    const std::string& Doubt() const { return doubt_; }

 private:
    std::string doubt_;
};

}  // namespace kelvo
