#pragma once

#include <concepts>
#include <type_traits>

namespace kelvo {

struct CalibrationState;
struct EntryState;
struct Geometry;
struct GraphState;
struct HardwareSettings;
struct IonSettings;
struct IseCalibration;
struct Navigation;
struct Paths;
struct PhCalibration;
struct PhEntry;
struct ReadingSettings;
struct RecordingChoices;
struct StatusMessages;
struct StoredWithCalibration;
struct TableState;

namespace detail {

/// Hands out one group of the state.
template <typename Group>
class GroupOf {
 public:
    explicit GroupOf(Group& group) : group_(&group) {}
    // NOLINTNEXTLINE(google-explicit-constructor): a function that takes the group alone is handed the whole
    operator Group&() const { return *group_; }

 private:
    Group* group_;
};

}  // namespace detail

/// The groups of the state that a presenter or a function works on, by reference: made from whatever holds at least
/// these, the whole state or another `StateOf`, and handed on to whoever takes one of them or fewer. The groups need no
/// definition here, so that a header that passes them on follows none of theirs.
///
///     void Save(StateOf<const Paths, StatusMessages> state) {
///         const Paths& paths = state;
template <typename... Groups>
class StateOf : public detail::GroupOf<Groups>... {
 public:
    template <typename Holder>
    requires(!std::same_as<std::remove_cvref_t<Holder>, StateOf>)
        // The caller has no need to name the groups, and what is required of the holder keeps copies out.
        // NOLINTNEXTLINE(google-explicit-constructor, bugprone-forwarding-reference-overload)
        StateOf(Holder&& holder)
        : detail::GroupOf<Groups>(static_cast<Groups&>(holder))... {}

    explicit(sizeof...(Groups) == 1) StateOf(Groups&... groups) : detail::GroupOf<Groups>(groups)... {}

    template <typename Group>
    Group& Get() const {
        return static_cast<Group&>(*this);
    }
};

}  // namespace kelvo
