#include "base/run_time_error.h"

namespace stelvan::base {

RunTimeError overflow() {
    return {6, "Overflow"};
}
RunTimeError subscriptOutOfRange() {
    return {9, "Subscript out of range"};
}
RunTimeError typeMismatch() {
    return {13, "Type mismatch"};
}
RunTimeError objectNotSet() {
    return {91, "Object not set"};
}
RunTimeError invalidUseOfNull() {
    return {94, "Invalid use of Null"};
}

}  // namespace stelvan::base
