// Tells a new press of a hot key from the repeats of one that is held down.

#pragma once

#include <chrono>
#include <map>

namespace quillmar {

template <class Key>
class HeldKeys {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// A nested display server repeats a held key as releases and presses. This is more than the time
  /// between them and less than a person needs.
  static constexpr std::chrono::milliseconds shortestRelease{20};
  /// A key without events for this long has been released. The desktop does not report a release
  /// while the screen is locked.
  static constexpr std::chrono::seconds longestSilence{5};

  /// Returns true if the event is a new press.
  bool press(const Key& key, Time now) {
    const auto [found, isFirst] = states_.try_emplace(key);
    State& state = found->second;
    const bool isRepeat = !isFirst && now - state.changed < (state.isDown ? Duration(longestSilence)
                                                                          : shortestRelease);
    state = {true, now};
    return !isRepeat;
  }

  void release(const Key& key, Time now) { states_[key] = {false, now}; }

  void clear() { states_.clear(); }

 private:
  using Duration = Time::duration;

  struct State {
    bool isDown = false;
    /// Time of the last event.
    Time changed;
  };

  std::map<Key, State> states_;
};

}  // namespace quillmar
