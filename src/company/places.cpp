#include "company/places.h"

#include <QDir>
#include <QSettings>
#include <QStandardPaths>

#include "store/error.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;

const QString kChosen = u"Folder"_s;

/// What is true of this user before any folder is known.
QString userSettings() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/hinata-mint.ini"_s;
}

}  // namespace

QString programFolder(const QString& executableDir) {
    if (QDir(executableDir).exists(u"Data"_s)) return executableDir;
    const QString chosen = QSettings(userSettings(), QSettings::IniFormat).value(kChosen).toString();
    if (!chosen.isEmpty() && QDir(chosen).exists(u"Data"_s)) return chosen;
    const QString own =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/hinata-mint"_s;
    QDir().mkpath(own + u"/Data"_s);
    return own;
}

QString settingsKey(const QString& what, const QString& company) {
    return what + u'/' + QString::fromLatin1(company.toUtf8().toHex());
}

void chooseProgramFolder(const QString& folder) {
    QSettings settings(userSettings(), QSettings::IniFormat);
    const bool provided = QDir().mkpath(folder + u"/Data"_s);
    if (provided) settings.setValue(kChosen, folder);
    settings.sync();
    if (!provided || settings.status() != QSettings::NoError)
        throw store::Error(store::Error::Reason::ReadOnly,
                           u"このフォルダには書き込めません。\n"_s + QDir::toNativeSeparators(folder));
}

}  // namespace company
