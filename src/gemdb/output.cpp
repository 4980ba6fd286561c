#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "gemdb/commands.h"
#include "gemdb/working.h"

namespace stelvan::gemdb {

namespace {
constexpr std::size_t kBufferSize = 1 << 16;
}

void Output::write(std::string_view text) {
    buffer_ += text;
    flushWhenFull();
}

void Output::flushWhenFull() {
    if (buffer_.size() >= kBufferSize) flush();
}

void Output::finish() {
    flush();
    if (std::fflush(stdout) != 0)
        throw std::runtime_error(std::string("output: ") + std::strerror(errno));
}

void Output::flush() {
    if (Working* const working = Working::current()) working->makeRoom();
    if (std::fwrite(buffer_.data(), 1, buffer_.size(), stdout) != buffer_.size()) {
        throw std::runtime_error(std::string("output: ") + std::strerror(errno));
    }
    buffer_.clear();
}

}  // namespace stelvan::gemdb
