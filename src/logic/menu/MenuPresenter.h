#pragma once

#include <functional>

#include "core/Routes.h"
#include "core/ScreenNavigator.h"
#include "core/StateOf.h"

namespace kelvo {

class FileChooser;
class Link;
class Prompts;

/// The sub-menu without its widgets: which buttons the branch has, which are open, and what each leads to under which
/// condition.
class MenuPresenter {
 public:
    using State =
        StateOf<Navigation, IseCalibration, PhCalibration, StoredWithCalibration, const Paths, const HardwareSettings>;
    /// @param link  null where no interface can be reached
    /// @param help  shows the help sheet of the branch
    MenuPresenter(State state, Prompts& prompts, FileChooser& files, ScreenNavigator& screens, Link* link,
                  std::function<void()> help)
        : state_(state), prompts_(prompts), files_(files), screens_(screens), link_(link), help_(std::move(help)) {}

    const RouteBranch& Branch() const;
    /// Whether the screen of that row can be shown at all.
    bool Open(std::size_t row) const { return screens_.Knows(Branch().rows.at(row).target); }

    void Choose(std::size_t row);
    void Back();
    void Exit();

 private:
    void Go(const RouteRow& row);
    void SetMarks(const RouteRow& row);

    State state_;
    Prompts& prompts_;
    FileChooser& files_;
    ScreenNavigator& screens_;
    Link* link_;
    std::function<void()> help_;
};

}  // namespace kelvo
