// A database that this user may read and not write.
#include <sys/stat.h>
#include <unistd.h>

#include <QLabel>

#include "tests/support/window_bench.h"

namespace stelvan::app {
namespace {

constexpr uid_t kNobody = 65534;

/// Works as another user while it lives, where the tests run as root, to whom nothing is read-only.
class AsOrdinaryUser {
public:
    AsOrdinaryUser() : was_(::geteuid()) {
        if (was_ == 0) changed_ = ::seteuid(kNobody) == 0;
    }
    ~AsOrdinaryUser() {
        if (changed_ && ::seteuid(was_) != 0) std::abort();
    }
    AsOrdinaryUser(const AsOrdinaryUser&) = delete;
    AsOrdinaryUser& operator=(const AsOrdinaryUser&) = delete;

private:
    uid_t was_;
    bool changed_ = false;
};

class ReadOnly : public test::WindowBench {
protected:
};

TEST_F(ReadOnly, IsSaidWhenAnEditBeginsAndNotFirstAtTheSave) {
    open();
    ::chmod(scratch.path().c_str(), 0755);
    ::chmod(state().databasePath.c_str(), 0444);
    const AsOrdinaryUser user;
    clickCategory(gem::CSTALM);
    const QString caption = form().statusPanel->text();
    EXPECT_EQ(caption, "Custom Alarms");
    edit();
    EXPECT_TRUE(form().statusPanel->text().contains("read-only"));
    press(form().nav.cmdCancel);
    EXPECT_EQ(form().statusPanel->text(), caption);
}

TEST_F(ReadOnly, AWritableDatabaseIsNotSpokenOf) {
    open();
    clickCategory(gem::CSTALM);
    edit();
    EXPECT_EQ(form().statusPanel->text(), "Custom Alarms");
}

}  // namespace
}  // namespace stelvan::app
