#include "base/run_time_error.h"

namespace stelvan::base {

void RunTimeError::arose(std::string_view window, std::string_view procedure) {
    if (source_.empty()) source_.append(window).append(".").append(procedure);
}

RunTimeError overflow() {
    return {6, "Overflow"};
}
RunTimeError outOfMemory() {
    return {7, "Out of memory"};
}
RunTimeError subscriptOutOfRange() {
    return {9, "Subscript out of range"};
}
RunTimeError typeMismatch() {
    return {13, "Type mismatch"};
}
RunTimeError internalError(const std::exception& failure) {
    return {51, std::string("Internal error: ") + failure.what()};
}
RunTimeError objectNotSet() {
    return {91, "Object not set"};
}
RunTimeError invalidUseOfNull() {
    return {94, "Invalid use of Null"};
}

}  // namespace stelvan::base
