#include "form/aids.h"

#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "form/list_view.h"
#include "form/tool_bar.h"

namespace stelvan::form {
namespace {

QLineEdit* buildFind() {
    auto* const find = new QLineEdit;
    find->setObjectName(QStringLiteral("txtFind"));
    find->setPlaceholderText(QStringLiteral("Find name, ID, group or text"));
    find->setToolTip(QStringLiteral("Find a record of any category (Ctrl+F)"));
    find->setAccessibleName(QStringLiteral("Find name, ID, group or text"));
    find->setClearButtonEnabled(true);
    return find;
}

ListView* buildFound() {
    auto* const found = new ListView;
    found->setObjectName(QStringLiteral("lvwFound"));
    found->setAccessibleName(QStringLiteral("Found records"));
    found->setHeaders({QStringLiteral("Category"), QStringLiteral("ID"), QStringLiteral("Name")});
    found->setWidths({3, -6, 4});
    found->hide();
    return found;
}

QToolButton* buildUsedIn() {
    auto* const used = new QToolButton;
    used->setObjectName(QStringLiteral("lblUsedIn"));
    used->setAutoRaise(true);
    used->setToolButtonStyle(Qt::ToolButtonTextOnly);
    used->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    used->setFocusPolicy(Qt::TabFocus);
    used->setEnabled(false);
    QSizePolicy keepsItsPlace = used->sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    used->setSizePolicy(keepsItsPlace);
    return used;
}

QLabel* buildNotice() {
    auto* const notice = new QLabel;
    notice->setObjectName(QStringLiteral("lblNotice"));
    notice->setTextFormat(Qt::PlainText);
    notice->setAccessibleName(QStringLiteral("Notice"));
    QFont font = notice->font();
    font.setBold(true);
    notice->setFont(font);
    notice->hide();
    return notice;
}

}  // namespace

Aids buildAids(QMainWindow& window) {
    Aids aids;
    aids.txtFind = buildFind();
    aids.lvwFound = buildFound();
    aids.lblUsedIn = buildUsedIn();
    aids.lblNotice = buildNotice();
    aids.tlbModel = new ToolBar;
    window.addToolBar(Qt::TopToolBarArea, aids.tlbModel);
    aids.tlbModel->toggleViewAction()->setVisible(false);
    return aids;
}

QWidget* buildTreeSide(const Aids& aids, QTreeWidget* tree) {
    auto* const side = new QWidget;
    auto* const column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(aids.txtFind);
    column->addWidget(tree, 1);
    column->addWidget(aids.lvwFound, 1);
    return side;
}

}  // namespace stelvan::form
