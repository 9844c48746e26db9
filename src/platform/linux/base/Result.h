#pragma once

#include <cstring>
#include <string>
#include <utility>
#include <variant>

namespace fernhop::freedesktop {

/// Why an operation failed. A value.
struct Failure {
    std::string reason;  ///< in words, for people
    int errorNumber = 0; ///< the errno value behind it; 0: there is none

    /// The failure of a system call, in the system's words.
    [[nodiscard]] static Failure ofSystem(int errorNumber) {
        return {std::strerror(errorNumber), errorNumber};
    }
};

/// The value of a `Result` that has nothing to tell but that it succeeded.
struct Success {};

/// What an operation gave, or why it failed. Made from either, so that functions return the one or the other:
/// `return Success{};`, `return Failure{"no such program", ENOENT};`. A value.
template <typename Value = Success>
class [[nodiscard]] Result {
  public:
    Result(Value given) : outcome(std::in_place_index<0>, std::move(given)) {}
    Result(Failure why) : outcome(std::in_place_index<1>, std::move(why)) {}

    /// Whether the operation succeeded.
    [[nodiscard]] explicit operator bool() const { return outcome.index() == 0; }

    /// What the operation gave; only after a success.
    [[nodiscard]] Value &operator*() { return *std::get_if<0>(&outcome); }
    [[nodiscard]] const Value &operator*() const { return *std::get_if<0>(&outcome); }
    [[nodiscard]] Value *operator->() { return std::get_if<0>(&outcome); }
    [[nodiscard]] const Value *operator->() const { return std::get_if<0>(&outcome); }

    /// Why the operation failed; only after a failure.
    [[nodiscard]] const Failure &failure() const { return *std::get_if<1>(&outcome); }

  private:
    std::variant<Value, Failure> outcome;
};

} // namespace fernhop::freedesktop
