#include "model/core/kept_copies.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <ctime>
#include <functional>
#include <optional>
#include <string>

#include "base/user_folders.h"
#include "jet/disk/error.h"
#include "jet/disk/file_locks.h"
#include "jet/disk/file_system.h"
#include "jet/disk/journal.h"
#include "jet/disk/page_file.h"
#include "jet/disk/user_entry.h"
#include "model/core/open_in.h"
#include "model/core/refusal.h"
#include "model/core/whole_copy.h"

namespace stelvan::model {
namespace {

namespace fs = std::filesystem;
using jet::FileSystem;

constexpr const char* kStamp = "%Y%m%dT%H%M%SZ";
constexpr const char* kExtension = ".mdb";
constexpr std::uint32_t kOwnersAlone = 0600;

/// Where the file itself is, or would be.
fs::path placeOf(const fs::path& model) {
    return fs::weakly_canonical(fs::absolute(model));
}

std::string stampOf(std::chrono::sys_seconds moment) {
    const std::time_t seconds = moment.time_since_epoch().count();
    std::tm utc{};
    ::gmtime_r(&seconds, &utc);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), kStamp, &utc);
    return text.data();
}

/// "20260314T091500Z.mdb", "20260314T091500Z-2.mdb"
std::string nameOf(const KeptCopy& copy) {
    return stampOf(copy.made) + (copy.number > 1 ? "-" + std::to_string(copy.number) : "") +
           kExtension;
}

std::optional<KeptCopy> copyNamed(const fs::path& path) {
    const std::string name = path.filename().string();
    std::tm utc{};
    const char* rest = ::strptime(name.c_str(), kStamp, &utc);
    if (rest == nullptr) return std::nullopt;
    KeptCopy copy{path, std::chrono::sys_seconds(std::chrono::seconds(::timegm(&utc)))};
    if (*rest == '-') std::from_chars(rest + 1, name.c_str() + name.size(), copy.number);
    return nameOf(copy) == name ? std::optional(copy) : std::nullopt;
}

/// The moment of the next copy, behind those there are: wherever a clock was set back, the newest
/// one is the last to go.
KeptCopy following(const std::vector<KeptCopy>& copies, std::chrono::sys_seconds now) {
    if (copies.empty() || copies.front().made < now) return {{}, now};
    return {{}, copies.front().made, copies.front().number + 1};
}

/// Each folder that is missing, on the medium and for its user alone.
void makeFolder(const fs::path& folder) {
    if (fs::is_directory(folder)) return;
    makeFolder(folder.parent_path());
    if (fs::create_directory(folder)) fs::permissions(folder, fs::perms::owner_all);
    FileSystem::standard().syncFolder(folder.parent_path());
}

void requireUnused(const fs::path& place) {
    FileSystem& files = FileSystem::standard();
    const std::string name = place.string();
    const auto status = files.status(place);
    if (!status->regular) throw Refusal(name + ": is no file that could be replaced");
    if (!status->writeBits || !files.canCreateIn(jet::folderOf(place)))
        throw Refusal(name + ": may only be read, so nothing was restored");
    for (const Opener& opener : programsWithOpen(place))
        throw Refusal(name + ": is open in " +
                      (opener.self
                           ? "this program"
                           : opener.name + " (process " + std::to_string(opener.process) + ")") +
                      "; close it there, then restore");
    if (jet::useOf(*files.open(place, FileSystem::Mode::Read)) != jet::Use::None)
        throw Refusal(name + ": is in use by another program; close it there, then restore");
    jet::UserEntry::requireNobody(files, place);
}

/// Reads once, which puts right what a program left that ended in the middle of a change.
void settle(const fs::path& place) {
    const jet::ReadScope once(jet::PageFile::open(place, jet::Access::ReadOnly));
}

/// The writers' turn at a file that is about to be replaced, be it a sound database or not.
class Turn {
public:
    explicit Turn(const fs::path& place)
        : file_(FileSystem::standard().open(place, FileSystem::Mode::ReadWrite)),
          locks_(*file_, place) {
        locks_.reserve(false);
    }
    ~Turn() { locks_.unreserve(); }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    [[nodiscard]] std::uint32_t permissions() { return file_->status().permissions; }

private:
    std::unique_ptr<jet::OpenFile> file_;
    jet::FileLocks locks_;
};

}  // namespace

KeptCopies::KeptCopies(fs::path folder, Clock now)
    : folder_(std::move(folder)), now_(std::move(now)) {}

fs::path KeptCopies::folderOfUser() {
    return base::stateFolder() / "copies";
}

std::chrono::sys_seconds KeptCopies::presentTime() {
    return std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
}

fs::path KeptCopies::folderFor(const fs::path& place) const {
    return folder_ / place.relative_path();
}

std::vector<KeptCopy> KeptCopies::in(const fs::path& folder) const {
    std::vector<KeptCopy> copies;
    std::error_code none;
    for (const auto& entry : fs::directory_iterator(folder, none)) {
        std::optional<KeptCopy> copy = copyNamed(entry.path());
        if (!copy || !entry.is_regular_file(none)) continue;
        copy->bytes = entry.file_size(none);
        copies.push_back(*std::move(copy));
    }
    std::ranges::sort(copies, std::greater(),
                      [](const KeptCopy& copy) { return std::pair(copy.made, copy.number); });
    return copies;
}

std::vector<KeptCopy> KeptCopies::of(const fs::path& model) const {
    return in(folderFor(placeOf(model)));
}

fs::path KeptCopies::keep(const fs::path& model) const {
    const fs::path place = placeOf(model);
    fs::path copy = keepAt(place);
    prune(place);
    return copy;
}

fs::path KeptCopies::keepAt(const fs::path& place) const {
    const fs::path folder = folderFor(place);
    const jet::ReadScope unchanged(jet::PageFile::open(place, jet::Access::ReadOnly));
    const std::vector<KeptCopy> copies = in(folder);
    if (!copies.empty() && sameContent(copies.front().path, place)) return copies.front().path;
    makeFolder(folder);
    removeDrafts(folder);
    fs::path copy = folder / nameOf(following(copies, now_()));
    copyWhole(place, copy, kOwnersAlone);
    return copy;
}

void KeptCopies::prune(const fs::path& place) const {
    const std::vector<KeptCopy> copies = of(place);
    for (std::size_t old = kMost; old < copies.size(); ++old) {
        try {
            FileSystem::standard().remove(copies[old].path);
        } catch (const jet::Error&) {
            // One too many does no harm; what was asked for is done.
        }
    }
}

void KeptCopies::restore(const fs::path& model, const KeptCopy& copy) const {
    FileSystem& files = FileSystem::standard();
    const fs::path place = placeOf(model);
    std::optional<Turn> turn;
    if (files.status(place)) {
        requireUnused(place);
        settle(place);
        turn.emplace(place);
        keepAt(place);
    }
    // Whatever it speaks of, it is not the file that comes now.
    jet::Journal(files, place).remove();
    files.syncFolder(jet::folderOf(place));
    removeDrafts(jet::folderOf(place));
    copyWhole(copy.path, place, turn ? turn->permissions() : 0);
    prune(place);
}

}  // namespace stelvan::model
