#pragma once
#include <QString>
#include <array>

namespace company {

/// The columns of 会社テーブル as they are entered, in their order: the five last are the names of the free
/// attributes.
struct ProfileField {
    QString column;
    qint32 bytes;   ///< at most, in Windows-31J
    QString label;  ///< as a check names it
};
inline const std::array<ProfileField, 12> kProfileFields = {
    {{QStringLiteral("会社名"), 30, QStringLiteral("･･･会社名")},
     {QStringLiteral("郵便番号"), 8, QStringLiteral("･･･郵便番号")},
     {QStringLiteral("所在地１"), 40, QStringLiteral("･･･所在地１")},
     {QStringLiteral("所在地２"), 40, QStringLiteral("･･･所在地２")},
     {QStringLiteral("tel"), 13, QStringLiteral("･･･tel")},
     {QStringLiteral("fax"), 13, QStringLiteral("･･･fax")},
     {QStringLiteral("代表者名"), 30, QStringLiteral("･･･代表者名")},
     {QStringLiteral("自由マスタ1"), 12, QStringLiteral("･･･自由ﾏｽﾀ1")},
     {QStringLiteral("自由マスタ2"), 12, QStringLiteral("･･･自由ﾏｽﾀ2")},
     {QStringLiteral("自由マスタ3"), 12, QStringLiteral("･･･自由ﾏｽﾀ3")},
     {QStringLiteral("自由マスタ4"), 12, QStringLiteral("･･･自由ﾏｽﾀ4")},
     {QStringLiteral("自由マスタ5"), 12, QStringLiteral("･･･自由ﾏｽﾀ5")}}};
inline constexpr int kFreeNames = 7;  ///< where the names of the free attributes begin
/// The name of an attribute that is not used.
inline const QString kUnusedName = QStringLiteral("未設定");

}  // namespace company
