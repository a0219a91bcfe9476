#include "reports/ui_sent_sheet.h"

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "forms/box.h"
#include "reports/ui_open_document.h"
#include "widgets/theme.h"

namespace reports {

SentSheet::SentSheet(QWidget* parent) : QWidget(parent), label_(new QLabel(this)) {
    label_->setObjectName(QStringLiteral("lblSent"));
    label_->setWordWrap(true);
    label_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(widgets::kGrid);
    row->addWidget(label_, 1);
    const auto add = [&](const QString& name, const QString& caption, bool folder) {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(name);
        row->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, folder] {
            const QString target = folder ? QFileInfo(path_).path() : path_;
            if (!QFileInfo::exists(target) || !openDocument(target))
                forms::tell(window(), QStringLiteral("開けません。\n") + QDir::toNativeSeparators(target), {},
                            forms::BoxIcon::Warning);
        });
    };
    add(QStringLiteral("SentOpen"), QStringLiteral("開く(&O)"), false);
    add(QStringLiteral("SentFolder"), QStringLiteral("フォルダーを開く(&P)"), true);
    hide();
}

void SentSheet::tell(const QString& path, const QString& note) {
    path_ = path;
    const QString saved = QStringLiteral("保存しました: %1").arg(QDir::toNativeSeparators(path));
    label_->setText(note.isEmpty() ? saved : saved + u'\n' + note);
    show();
    openDocument(path);
}

}  // namespace reports
