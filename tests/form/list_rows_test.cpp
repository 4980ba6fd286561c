#include "form/list_rows.h"

#include <gtest/gtest.h>

#include "tests/support/qt_text.h"

namespace stelvan::form {
namespace {

TEST(ListRows, ShowEachLineBreakAsABlankAndTheWholeTextAsAHint) {
    ListRows rows;
    rows.setHeaders({QStringLiteral("Description")});
    for (const char16_t* stored : {u"a\nb", u"a\r\nb", u"a\rb", u"a\tb", u"a\u2028b"}) {
        const QString text = QString::fromUtf16(stored);
        rows.setRows({ListRow{{text}}});
        EXPECT_EQ(rows.index(0, 0).data(Qt::DisplayRole).toString(), QStringLiteral("a b"));
        EXPECT_EQ(rows.index(0, 0).data(Qt::ToolTipRole).toString(), text);
    }
}

}  // namespace
}  // namespace stelvan::form
