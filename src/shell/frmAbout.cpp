#include "shell/frmAbout.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include "forms/global_record.h"
#include "shell/frmLicence.h"
#include "shell/licences.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace shell {

frmAbout::frmAbout(forms::House& house, QWidget* parent)
    : Form(QStringLiteral("frmAbout"), QStringLiteral("ひなた堂ミント【賞与配分】のﾊﾞｰｼﾞｮﾝ情報"), parent) {
    auto* title = make<QLabel>(QStringLiteral("lblTitle"),
                               QStringLiteral("ひなた堂ミント賞与配分のVersion2.5.2に基づいています"));
    widgets::setTone(title, widgets::Tone::Heading);
    auto* text = make<QLabel>(
        QStringLiteral("Label1"),
        QStringLiteral(
            "本製品は、豊富な設計パターンにより、様々な企業の賞与を設計・運用することができます。"));
    text->setWordWrap(true);
    auto* version = make<QLabel>(QStringLiteral("lblVersion"),
                                 QStringLiteral("バージョン ") + QCoreApplication::applicationVersion());
    widgets::setTone(version, widgets::Tone::Muted);
    auto* ok = make<QPushButton>(QStringLiteral("cmdOK"), QStringLiteral("OK"));
    widgets::setPrimary(ok);
    setCancelButton(ok);
    auto* licences =
        make<QPushButton>(QStringLiteral("cmdLicence"), QStringLiteral("ライセンスの全文(&L)..."));

    auto* column = widgets::columnOf(this);
    column->addWidget(title);
    column->addWidget(version);
    column->addWidget(text);
    column->addWidget(dataFolder(house.global.dataDir()));
    column->addWidget(libraries());
    column->addStretch();
    column->addLayout(widgets::buttonRow({licences}, {ok}));
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(licences, &QPushButton::clicked, this, [this] { showChild(new frmLicence(this)); });
    ok->setFocus();
}

QWidget* frmAbout::dataFolder(const QString& path) {
    auto* card = new widgets::Card(this);
    auto* heading = new QLabel(QStringLiteral("データのフォルダ"), card);
    widgets::setTone(heading, widgets::Tone::Muted);
    auto* folder = new QLabel(QDir::toNativeSeparators(path), card);
    folder->setObjectName(QStringLiteral("lblDataFolder"));
    folder->setTextFormat(Qt::PlainText);
    folder->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    folder->setWordWrap(true);
    card->body()->addWidget(heading);
    card->body()->addWidget(folder);
    return card;
}

QWidget* frmAbout::libraries() {
    auto* card = new widgets::Card(this);
    auto* heading = new QLabel(QStringLiteral("使用しているライブラリ"), card);
    widgets::setTone(heading, widgets::Tone::Muted);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(3 * widgets::kGrid);
    grid->setVerticalSpacing(widgets::kGrid / 2);
    for (const Library& library : usedLibraries()) {
        const int row = grid->rowCount();
        grid->addWidget(new QLabel(library.name, card), row, 0);
        grid->addWidget(new QLabel(library.purpose, card), row, 1);
        grid->addWidget(new QLabel(library.licence, card), row, 2);
    }
    card->body()->addWidget(heading);
    card->body()->addLayout(grid);
    return card;
}

}  // namespace shell
