// How far long work has come, and its way to be stopped.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

namespace stelvan::model {

/// Called now and then with what is being done ("reading variables") and how much of how much. To
/// stop the work, throw: nothing that is only half done stays. Empty where nobody wants to know.
using Progress = std::function<void(std::string_view what, std::size_t done, std::size_t total)>;

inline void tell(const Progress& progress, std::string_view what, std::size_t done,
                 std::size_t total) {
    if (progress) progress(what, done, total);
}

}  // namespace stelvan::model
