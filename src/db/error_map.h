// Failures of the file engine and of SQL as the provider reports them: number and text.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "base/run_time_error.h"
#include "jet/disk/error.h"
#include "sql/error.h"

namespace stelvan::db {

/// The numbers that a provider failure can have.
namespace provider {
inline constexpr std::int32_t kFailed = -2147467259;            // 80004005
inline constexpr std::int32_t kSyntax = -2147217900;            // 80040E14
inline constexpr std::int32_t kNoSuchTable = -2147217865;       // 80040E37
inline constexpr std::int32_t kMissingParameter = -2147217904;  // 80040E10
inline constexpr std::int32_t kTypeMismatch = -2147217913;      // 80040E07
inline constexpr std::int32_t kDataOverflow = -2147217833;      // 80040E57
inline constexpr std::int32_t kErrorsOccurred = -2147217887;    // 80040E21
inline constexpr std::int32_t kRowChanged = -2147217864;        // 80040E38
inline constexpr std::int32_t kReadOnly = -2147217911;          // 80040E09
inline constexpr std::int32_t kBadPassword = -2147217843;       // 80040E4D
}  // namespace provider

/// The record set's and connection's own failures.
[[nodiscard]] base::RunTimeError badArgument();                             // 3001
[[nodiscard]] base::RunTimeError noCurrentRecord();                         // 3021
[[nodiscard]] base::RunTimeError notAllowedHere();                          // 3219
[[nodiscard]] base::RunTimeError notUpdatable();                            // 3251
[[nodiscard]] base::RunTimeError noSuchItem(const std::string& name = {});  // 3265
[[nodiscard]] base::RunTimeError objectClosed();                            // 3704
[[nodiscard]] base::RunTimeError objectOpen();                              // 3705
[[nodiscard]] base::RunTimeError noSuchProvider();                          // 3706
[[nodiscard]] base::RunTimeError connectionUnusable();                      // 3709
[[nodiscard]] base::RunTimeError rowChanged();                              // -2147217864

/// Which way a change takes: a few failures have another number through a record set.
enum class Through { Statement, RecordSet };

[[nodiscard]] base::RunTimeError asProviderError(const jet::Error& error, Through through);
[[nodiscard]] base::RunTimeError asProviderError(const sql::Error& error);

/// Runs `body`; what the floors below throw becomes a RunTimeError.
template <typename Body>
decltype(auto) translated(Through through, Body&& body) {
    try {
        return std::forward<Body>(body)();
    } catch (const jet::Error& error) {
        throw asProviderError(error, through);
    } catch (const sql::Error& error) {
        throw asProviderError(error);
    }
}

}  // namespace stelvan::db
