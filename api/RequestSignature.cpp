#include "api/RequestSignature.h"

#include <QCryptographicHash>
#include <QString>
#include <QVarLengthArray>

#include <algorithm>

namespace {

constexpr char salt[] = "Q#pd]3Ha>wz-8&Mv";

bool isAscii(const QByteArray &bytes)
{
    return std::all_of(
        bytes.cbegin(), bytes.cend(), [](char c) { return static_cast<signed char>(c) >= 0; });
}

// The server reads values as UTF-8. Where that is also the local encoding, the way through the text
// only replaces what is not valid; for ASCII it changes nothing in any encoding.
QByteArray asRead(const QByteArray &value)
{
    return isAscii(value) ? value : QString::fromUtf8(value).toLocal8Bit();
}

} // namespace

QByteArray signatureText(const RequestHeaders &headers)
{
    QVarLengthArray<const RequestHeaders::value_type *, 24> sorted;
    for (const auto &header : headers) {
        sorted.append(&header);
    }
    std::sort(sorted.begin(), sorted.end(),
        [](const auto *left, const auto *right) { return left->first < right->first; });
    QByteArray text;
    text.reserve(512);
    for (const auto *header : qAsConst(sorted)) {
        const auto &[name, value] = *header;
        if (name.isEmpty() || value.isEmpty()) {
            continue;
        }
        if (!text.isEmpty()) {
            text += '&';
        }
        text += name + '=' + asRead(value);
    }
    text += salt;
    return text;
}

QByteArray signatureOf(const QByteArray &text)
{
    return QCryptographicHash::hash(text, QCryptographicHash::Md5).toHex();
}
