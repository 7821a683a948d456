#include "api/RequestSignature.h"

#include <QCryptographicHash>
#include <QString>

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

QByteArray signatureText(RequestHeaders headers)
{
    std::sort(headers.begin(), headers.end(),
        [](const auto &left, const auto &right) { return left.first < right.first; });
    QByteArray text;
    text.reserve(512);
    for (const auto &[name, value] : qAsConst(headers)) {
        if (name.isEmpty() || value.isEmpty()) {
            continue;
        }
        if (!text.isEmpty()) {
            text += '&';
        }
        text += name;
        text += '=';
        text += asRead(value);
    }
    text += salt;
    return text;
}

QByteArray signatureOf(const QByteArray &text)
{
    return QCryptographicHash::hash(text, QCryptographicHash::Md5).toHex();
}
