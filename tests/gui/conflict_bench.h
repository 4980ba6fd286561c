// A window, and another program that works on its file.
#pragma once

#include <QFile>

#include "tests/gui/edit_bench.h"

namespace stelvan::test {

inline constexpr auto kChanged = "ERROR(-2147217864) ";

class Conflict : public EditBench {
protected:
    /// What another program does to the file meanwhile.
    void elsewhere(const std::string& sql) {
        db::Connection connection;
        connection.setConnectionText("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + file() +
                                     "; Mode=Read|Write");
        connection.open();
        connection.execute(sql);
    }
    void hideFile() { ASSERT_TRUE(QFile::rename(path(), path() + ".away")); }
    void bringBackFile() { ASSERT_TRUE(QFile::rename(path() + ".away", path())); }
    [[nodiscard]] QString path() const { return form::toQt(file()); }

    void expectOneFailure(const QString& start) {
        ASSERT_EQ(dialogs.messages.size(), 1U) << dialogs.texts().join("\n").toStdString();
        EXPECT_TRUE(dialogs.messages[0].text.startsWith(start))
            << dialogs.messages[0].text.toStdString();
        dialogs.messages.clear();
    }
};

}  // namespace stelvan::test
