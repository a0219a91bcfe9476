#include "domain/code_page.h"

#include <unicode/ucnv.h>

#include <QStringDecoder>
#include <memory>

#include "store/error.h"

namespace domain {
namespace {

struct CloseConverter {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, CloseConverter>;

Converter openWindows31J() {
    UErrorCode status = U_ZERO_ERROR;
    Converter opened(ucnv_open("ibm-943_P15A-2003", &status));
    if (U_FAILURE(status)) {
        throw store::Error(store::Error::Reason::Engine,
                           QStringLiteral("文字コードの変換表が見つかりません。"));
    }
    return opened;
}

std::optional<QString> fromUtf8(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    if (decoder.hasError()) return {};
    return text;
}

std::optional<QString> fromWindows31J(const QByteArray& bytes) {
    const Converter converter = openWindows31J();
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    // A byte makes one unit at most.
    QString text(bytes.size(), Qt::Uninitialized);
    const int32_t length = ucnv_toUChars(converter.get(), reinterpret_cast<UChar*>(text.data()),
                                         static_cast<int32_t>(text.size()), bytes.constData(),
                                         static_cast<int32_t>(bytes.size()), &status);
    if (U_FAILURE(status)) return {};
    text.truncate(length);
    return text;
}

}  // namespace

UConverter* windows31J() {
    static const Converter converter = openWindows31J();
    return converter.get();
}

std::optional<QString> decodeText(const QByteArray& bytes) {
    if (bytes.contains('\0')) return {};
    if (const auto text = fromUtf8(bytes)) return text;
    return fromWindows31J(bytes);
}

}  // namespace domain
