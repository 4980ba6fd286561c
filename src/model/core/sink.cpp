#include "model/core/sink.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <stdexcept>

namespace stelvan::model {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const fs::path& file) {
    throw std::runtime_error(file.string() + ": " + std::strerror(errno));
}

/// A file that is removed again unless it was given its name.
class Draft {
public:
    explicit Draft(const fs::path& wanted) : wanted_(wanted), draft_(wanted.string() + ".XXXXXX") {
        descriptor_ = ::mkstemp(draft_.data());
        if (descriptor_ < 0) fail(wanted_);
    }
    ~Draft() {
        if (descriptor_ >= 0) ::close(descriptor_);
        if (!draft_.empty()) ::unlink(draft_.c_str());
    }
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;

    void write(std::string_view text) {
        buffer_ += text;
        constexpr std::size_t kEnough = 1 << 16;
        if (buffer_.size() >= kEnough) flush();
    }

    void finish() {
        flush();
        const mode_t mask = ::umask(0);
        ::umask(mask);
        if (::fchmod(descriptor_, 0666 & ~mask) != 0 || ::fsync(descriptor_) != 0) fail(wanted_);
        if (::rename(draft_.c_str(), wanted_.c_str()) != 0) fail(wanted_);
        draft_.clear();
    }

private:
    void flush() {
        std::string_view rest = buffer_;
        while (!rest.empty()) {
            const ssize_t written = ::write(descriptor_, rest.data(), rest.size());
            if (written < 0 && errno == EINTR) continue;
            if (written < 0) fail(wanted_);
            rest.remove_prefix(static_cast<std::size_t>(written));
        }
        buffer_.clear();
    }

    fs::path wanted_;
    std::string draft_;
    std::string buffer_;
    int descriptor_ = -1;
};

}  // namespace

void writeWhole(const fs::path& file, const std::function<void(const Sink&)>& write) {
    Draft draft(file);
    write([&](std::string_view text) { draft.write(text); });
    draft.finish();
}

std::string readWhole(const fs::path& file) {
    if (fs::is_directory(file)) {
        errno = EISDIR;
        fail(file);
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream) fail(file);
    std::string text;
    std::error_code unknown;
    const auto size = fs::file_size(file, unknown);
    if (!unknown) text.reserve(size + 1);
    constexpr std::size_t kPiece = 1 << 16;
    while (stream) {
        const std::size_t before = text.size();
        text.resize(before + kPiece);
        stream.read(text.data() + before, kPiece);
        text.resize(before + static_cast<std::size_t>(stream.gcount()));
    }
    if (stream.bad()) fail(file);
    return text;
}

}  // namespace stelvan::model
