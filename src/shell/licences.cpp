#include "shell/licences.h"

namespace shell {

const std::vector<Library>& usedLibraries() {
    static const std::vector<Library> libraries{
        {QStringLiteral("Qt %1（Core、Gui、Widgets、PrintSupport）").arg(QString::fromLatin1(qVersion())),
         QStringLiteral("画面と印刷"), QStringLiteral("LGPL バージョン3（動的リンク）")},
        {QStringLiteral("SQLite3 Multiple Ciphers"), QStringLiteral("データの保存と暗号化"),
         QStringLiteral("MIT ライセンス")},
        {QStringLiteral("SQLite"), QStringLiteral("データの保存"), QStringLiteral("パブリックドメイン")},
        {QStringLiteral("ICU"), QStringLiteral("文字の変換"), QStringLiteral("Unicode ライセンス")},
        {QStringLiteral("libxlsxwriter"), QStringLiteral("表計算の書き出し"),
         QStringLiteral("BSD 2条項ライセンス（一部は MPL 2.0 など）")},
        {QStringLiteral("zlib"), QStringLiteral("書き出した表の検査"), QStringLiteral("zlib ライセンス")},
        {QStringLiteral("libsodium"), QStringLiteral("パスワードの確認"), QStringLiteral("ISC ライセンス")}};
    return libraries;
}

const std::vector<LicenceText>& licenceTexts() {
    static const std::vector<LicenceText> texts{
        {QStringLiteral("Qt"), QStringLiteral("qt.txt")},
        {QStringLiteral("LGPL バージョン3"), QStringLiteral("LGPL-3.txt")},
        {QStringLiteral("GPL バージョン3"), QStringLiteral("GPL-3.txt")},
        {QStringLiteral("SQLite3 Multiple Ciphers と SQLite"), QStringLiteral("sqlite3mc.txt")},
        {QStringLiteral("ICU"), QStringLiteral("icu.txt")},
        {QStringLiteral("libxlsxwriter"), QStringLiteral("libxlsxwriter.txt")},
        {QStringLiteral("MPL 2.0"), QStringLiteral("MPL-2.0.txt")},
        {QStringLiteral("zlib"), QStringLiteral("zlib.txt")},
        {QStringLiteral("libsodium"), QStringLiteral("libsodium.txt")}};
    return texts;
}

}  // namespace shell
