#include "lines/Coordinates.h"

#include "lines/TextOrNumber.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <optional>

namespace {

// Reads the usual form, {"lon":"13.4","lat":"52.5"}, ten times faster than a JSON document does.
// It gives up on everything else: each step returns false (nothing) on the first surprise.
class UsualForm {
public:
    explicit UsualForm(const QString &text)
        : m_at(text.constData())
        , m_end(text.constData() + text.size())
    {
    }

    std::optional<Coordinates> read()
    {
        Coordinates result;
        if (skip('{') && member("lon", result.lon) && skip(',') && member("lat", result.lat)
            && skip('}') && m_at == m_end) {
            return result;
        }
        return std::nullopt;
    }

private:
    bool skip(char wanted)
    {
        if (m_at == m_end || *m_at != QLatin1Char(wanted)) {
            return false;
        }
        ++m_at;
        return true;
    }

    bool member(const char *name, double &value)
    {
        return skip('"') && skip(name[0]) && skip(name[1]) && skip(name[2]) && skip('"')
            && skip(':') && (skip('"') ? number(value) && skip('"') : number(value));
    }

    // Up to 15 digits: both the digits and the power of ten are exact as doubles, so the one
    // division rounds as strtod() does.
    bool number(double &value)
    {
        static constexpr std::array<double, 16> powersOfTen = {
            1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
        const bool isNegative = skip('-');
        qint64 digits = 0;
        const QChar first = m_at != m_end ? *m_at : QChar();
        const int whole = readDigits(digits);
        const bool hasPoint = skip('.');
        const int fraction = hasPoint ? readDigits(digits) : 0;
        // JSON allows no zero in front of a number, text does: left to the parsers.
        if (whole == 0 || (whole > 1 && first == QLatin1Char('0')) || hasPoint != (fraction > 0)
            || whole + fraction > 15) {
            return false;
        }
        value = static_cast<double>(isNegative ? -digits : digits)
            / powersOfTen.at(static_cast<std::size_t>(fraction));
        return true;
    }

    int readDigits(qint64 &digits)
    {
        const QChar *const start = m_at;
        for (; m_at != m_end && *m_at >= QLatin1Char('0') && *m_at <= QLatin1Char('9')
             && m_at - start < 16;
             ++m_at) {
            digits = digits * 10 + (m_at->unicode() - '0');
        }
        return static_cast<int>(m_at - start);
    }

    const QChar *m_at;
    const QChar *m_end;
};

} // namespace

Coordinates coordinatesOf(QString location)
{
    location.remove(QLatin1Char('\\'));
    if (const std::optional<Coordinates> usual = UsualForm(location).read()) {
        return *usual;
    }
    const QJsonObject object = QJsonDocument::fromJson(location.toUtf8()).object();
    return {textOrNumberToDouble(object.value(QLatin1String("lon"))),
        textOrNumberToDouble(object.value(QLatin1String("lat")))};
}
