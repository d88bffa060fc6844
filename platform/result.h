// The outcome of an operation that can fail for external reasons: a value or an error. Platform
// interfaces report failures as results and never throw exceptions.

#pragma once

#include <string>
#include <utility>
#include <variant>

namespace quillmar {

/// The kinds of errors that callers handle differently.
enum class ErrorKind {
  other,
  /// The user lacks a permission, or the file system is read-only.
  notPermitted,
  /// The disk is full or a quota is exceeded.
  noSpace,
  /// The device reported an error.
  deviceFailure,
  /// The data exceeds a limit of this program.
  tooLarge,
};

/// Why an operation failed. `description` is UTF-8 text for the user, in full sentences that name
/// the file, program or place.
struct Error {
  std::string description;
  ErrorKind kind = ErrorKind::other;

  bool operator==(const Error&) const = default;
};

template <class T, class E = Error>
class [[nodiscard]] Result {
 public:
  Result(T value) : state_(std::in_place_index<0>, std::move(value)) {}
  Result(E error) : state_(std::in_place_index<1>, std::move(error)) {}

  bool ok() const { return state_.index() == 0; }
  explicit operator bool() const { return ok(); }

  /// Precondition: ok().
  T& value() & { return std::get<0>(state_); }
  const T& value() const& { return std::get<0>(state_); }
  T&& value() && { return std::get<0>(std::move(state_)); }

  /// Precondition: !ok().
  const E& error() const { return std::get<1>(state_); }

 private:
  std::variant<T, E> state_;
};

template <class E>
class [[nodiscard]] Result<void, E> {
 public:
  Result() = default;
  Result(E error) : state_(std::move(error)) {}

  bool ok() const { return state_.index() == 0; }
  explicit operator bool() const { return ok(); }

  /// Precondition: !ok().
  const E& error() const { return std::get<1>(state_); }

 private:
  std::variant<std::monostate, E> state_;
};

}  // namespace quillmar
