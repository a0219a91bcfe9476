#include "widgets/record_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPalette>
#include <QPushButton>

#include "widgets/layout.h"
#include "widgets/mint_style.h"
#include "widgets/theme.h"

namespace widgets {
namespace {

const QString kLongestStatus = QStringLiteral("ﾚｺｰﾄﾞを追加します。　");  ///< the window does not grow for it

QHBoxLayout* rowIn(QWidget* parent) {
    auto* row = new QHBoxLayout(parent);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kGrid);
    return row;
}

QPushButton* button(QWidget* parent, const char* name, const char* caption, const char* tip = nullptr) {
    auto* made = new QPushButton(QString::fromUtf8(caption), parent);
    made->setObjectName(QString::fromLatin1(name));
    if (tip) made->setToolTip(QString::fromUtf8(tip));
    return made;
}

}  // namespace

RecordBar::RecordBar(QWidget* form) : moves(new QWidget(form)), commands(new QWidget(form)) {
    first = button(moves, "cmdFirst", "最初", "Home");
    previous = button(moves, "cmdPrevious", "前へ", "↑　PageUp");
    status = new QLabel(moves);
    status->setObjectName(QStringLiteral("lblStatus"));
    status->setAlignment(Qt::AlignCenter);
    status->setMinimumWidth(status->fontMetrics().horizontalAdvance(kLongestStatus));
    next = button(moves, "cmdNext", "次へ", "↓　PageDown");
    last = button(moves, "cmdLast", "最後", "End");
    auto* walk = rowIn(moves);
    for (QWidget* part : {static_cast<QWidget*>(first), static_cast<QWidget*>(previous)})
        walk->addWidget(part);
    walk->addWidget(status, 1);
    for (QWidget* part : {next, last}) walk->addWidget(part);

    commands->setObjectName(QStringLiteral("picButtons"));
    remove = button(commands, "cmdDelete", "削除(&D)");
    add = button(commands, "cmdAdd", "追加(&A)");
    edit = button(commands, "cmdEdit", "編集(&E)");
    update = button(commands, "cmdUpdate", "更新(&U)");
    cancel = button(commands, "cmdCancel", "ｷｬﾝｾﾙ(&C)");
    close = button(commands, "cmdClose", "閉じる(&C)");
    auto* row = rowIn(commands);
    row->addWidget(remove);
    row->addStretch(1);
    for (QWidget* part : {add, edit, cancel, update, close}) row->addWidget(part);
    tabOrder({add, edit, update, cancel, remove, close});
    setPrimary(update);
    setDanger(remove);
    setBrowse(true);
}

void RecordBar::setBrowse(bool browse) {
    // What goes goes first: all together they would widen the window.
    const std::initializer_list<QPushButton*> browsing{add, edit, remove, close}, entering{update, cancel};
    for (QPushButton* part : browse ? entering : browsing) part->hide();
    for (QPushButton* part : browse ? browsing : entering) part->show();
    for (QPushButton* part : {first, previous, next, last}) part->setEnabled(browse);
}

void setNotEntered(QWidget* control, bool notEntered) {
    control->setProperty(kNotEnteredProperty, notEntered);
    QPalette palette;
    if (notEntered) palette.setColor(QPalette::Text, QColor(kNotEnteredText));
    if (notEntered) palette.setColor(QPalette::ButtonText, QColor(kNotEnteredText));
    control->setPalette(palette);
    control->update();
}

}  // namespace widgets
