#include "model/core/rewrite.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "jet/database.h"
#include "model/core/about_file.h"
#include "model/core/new_rows.h"
#include "model/core/whole_copy.h"
#include "model/core/write.h"

namespace stelvan::model {
namespace {

namespace fs = std::filesystem;

/// A place beside a file, removed again unless it was given the file's name.
class Draft {
public:
    explicit Draft(const fs::path& wanted) : wanted_(wanted), path_(wanted.string() + ".XXXXXX") {
        const int descriptor = ::mkstemp(path_.data());
        if (descriptor < 0) fail();
        ::close(descriptor);
    }
    ~Draft() {
        if (!path_.empty()) ::unlink(path_.c_str());
    }
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;

    [[nodiscard]] fs::path path() const { return path_; }

    void finish() {
        if (::rename(path_.c_str(), wanted_.c_str()) != 0) fail();
        path_.clear();
    }

private:
    [[noreturn]] void fail() const {
        throw std::runtime_error(wanted_.string() + ": " + std::strerror(errno));
    }

    fs::path wanted_;
    std::string path_;
};

jet::Database openToWrite(const fs::path& file) {
    return jet::Database::open(file, jet::Access::ReadWrite);
}

/// The writers' turn at a file that is about to be replaced.
class Turn {
public:
    explicit Turn(const fs::path& file) : database_(openToWrite(file)), unit_(database_) {}

private:
    jet::Database database_;
    jet::UnitOfWork unit_;
};

void changeInPlace(const fs::path& file, const Rewriting& change) {
    jet::Database database = openToWrite(file);
    jet::UnitOfWork unit(database);
    std::optional<Model> wanted = change(read(database));
    if (!wanted) return;
    switchOffUnsaidFlags(database, *wanted);
    write(database, *std::move(wanted));
    unit.commit();
}

void changeCopy(const fs::path& source, const fs::path& out, const Rewriting& change) {
    std::optional<Turn> turn;
    aboutFile(out, [&] {
        if (fs::exists(out)) turn.emplace(out);
    });
    Draft draft(out);
    std::optional<Model> wanted = aboutFile(source, [&] {
        jet::Database database = jet::Database::open(source, jet::Access::ReadOnly);
        const auto unchanged = database.beginRead();
        std::optional<Model> made = change(read(database));
        if (made) copyWhole(source, draft.path());
        return made;
    });
    if (!wanted) return;
    aboutFile(out, [&] {
        jet::Database database = openToWrite(draft.path());
        switchOffUnsaidFlags(database, *wanted);
        write(database, *std::move(wanted));
    });
    draft.finish();
}

}  // namespace

void rewrite(const fs::path& source, const fs::path& out, const Rewriting& change) {
    std::error_code none;
    if (fs::equivalent(source, out, none))
        aboutFile(source, [&] { changeInPlace(source, change); });
    else
        changeCopy(source, out, change);
}

}  // namespace stelvan::model
