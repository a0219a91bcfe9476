#include "shell/frmLicence.h"

#include <QBoxLayout>
#include <QFile>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>

#include "shell/licences.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

static void loadResources() {
    Q_INIT_RESOURCE(licences);
}

namespace shell {

frmLicence::frmLicence(QWidget* parent)
    : Form(QStringLiteral("frmLicence"), QStringLiteral("ライセンスの全文"), parent) {
    loadResources();
    list_ = make<QListWidget>(QStringLiteral("lstLicence"));
    list_->setAccessibleName(QStringLiteral("ライセンスの一覧"));
    for (const LicenceText& text : licenceTexts()) list_->addItem(text.title);
    list_->setFixedWidth(list_->sizeHintForColumn(0) + 4 * widgets::kGrid);
    text_ = make<QPlainTextEdit>(QStringLiteral("txtLicence"));
    text_->setReadOnly(true);
    text_->setTabChangesFocus(true);
    text_->setAccessibleName(QStringLiteral("ライセンスの全文"));
    auto* close = make<QPushButton>(QStringLiteral("cmdClose"), QStringLiteral("閉じる(&C)"));
    widgets::setPrimary(close);
    setCancelButton(close);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(list_, &QListWidget::currentRowChanged, this, &frmLicence::showText);

    auto* both = new QHBoxLayout;
    both->addWidget(list_);
    both->addWidget(text_, 1);
    auto* column = widgets::columnOf(this);
    column->addLayout(both, 1);
    column->addLayout(widgets::buttonRow({}, {close}));
    resize(920, 560);
    list_->setCurrentRow(0);
    list_->setFocus();
}

void frmLicence::showText(int row) {
    const LicenceText& text = licenceTexts().at(static_cast<std::size_t>(row));
    QFile file(QStringLiteral(":/licences/") + text.file);
    if (file.open(QIODevice::ReadOnly)) text_->setPlainText(QString::fromUtf8(file.readAll()));
}

}  // namespace shell
