// Failures that name the file they are about, for work on several files.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

#include "model/core/refusal.h"

namespace stelvan::model {

/// What `body` gives. What it throws without naming the file becomes a std::runtime_error that
/// begins with its name; a Refusal, whose lines say where, stays what it is.
template <class Body>
auto aboutFile(const std::filesystem::path& file, const Body& body) {
    try {
        return body();
    } catch (const Refusal&) {
        throw;
    } catch (const std::exception& failure) {
        const std::string text = failure.what();
        if (text.find(file.string()) != std::string::npos) throw;
        throw std::runtime_error(file.string() + ": " + text);
    }
}

}  // namespace stelvan::model
