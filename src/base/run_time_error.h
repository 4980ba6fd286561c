// The one way to fail: a number, as the user knows it from the error box, and a text; and the trap
// in which a procedure runs, which names what fails in it.
#pragma once

#include <cstdint>
#include <exception>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace stelvan::base {

class RunTimeError : public std::runtime_error {
public:
    RunTimeError(std::int32_t number, const std::string& description)
        : std::runtime_error(description), number_(number) {}

    /// Run-time failures are small (6, 9, 13, 91, 94), record-set failures have the short form
    /// (3021, 3265), provider failures are the full signed 32-bit number (-2147467259).
    [[nodiscard]] std::int32_t number() const { return number_; }

    /// Window and procedure in which it arose, "frmMain.lLoadData"; empty until a trap named it.
    [[nodiscard]] const std::string& source() const { return source_; }
    /// The innermost procedure is the one that counts: a name that is there stays.
    void arose(std::string_view window, std::string_view procedure);

private:
    std::int32_t number_;
    std::string source_;
};

/// The run-time failures that the program's own code raises, with their texts.
[[nodiscard]] RunTimeError overflow();             // 6
[[nodiscard]] RunTimeError outOfMemory();          // 7
[[nodiscard]] RunTimeError subscriptOutOfRange();  // 9
[[nodiscard]] RunTimeError typeMismatch();         // 13
[[nodiscard]] RunTimeError objectNotSet();         // 91
[[nodiscard]] RunTimeError invalidUseOfNull();     // 94
/// What should not have happened: a failure of the language.
[[nodiscard]] RunTimeError internalError(const std::exception& failure);  // 51

/// Runs a procedure's body and returns what it returns. A failure gets the procedure's name, unless
/// it has one, and flies on: whoever called it must not take a missing answer for an answer. The
/// handler at the end of the way (ErrorInfo::handle) shows it.
template <class Body>
decltype(auto) trapIn(std::string_view window, std::string_view procedure, Body&& body) {
    const auto named = [&](RunTimeError failure) {
        failure.arose(window, procedure);
        return failure;
    };
    try {
        return std::forward<Body>(body)();
    } catch (const RunTimeError& failure) {
        throw named(failure);
    } catch (const std::bad_alloc&) {
        throw named(outOfMemory());
    } catch (const std::exception& failure) {
        throw named(internalError(failure));
    }
}

inline constexpr std::string_view kMainWindow = "frmMain";

/// The same for the procedures of the main window.
template <class Body>
decltype(auto) trap(std::string_view procedure, Body&& body) {
    return trapIn(kMainWindow, procedure, std::forward<Body>(body));
}

}  // namespace stelvan::base
