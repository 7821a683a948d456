// What Qt answers out of ICU's data: prove.sh compares it between the full and the reduced ones.
#include <QtCore>

int main()
{
    QTextStream out(stdout);
    out.setCodec("UTF-8");
    const QString text = QStringLiteral("Aéü 中文繁體 日本 한국 Привет ไทย €");
    for (const char *name : {"GBK", "GB18030", "GB2312", "Big5", "Big5-HKSCS", "Shift_JIS",
             "EUC-JP", "ISO-2022-JP", "EUC-KR", "windows-949", "ISO-2022-KR", "ISO-2022-CN",
             "KOI8-R", "KOI8-U", "windows-1250", "windows-1251", "TIS-620", "ISO-8859-15",
             "macintosh", "windows-1256", "IBM850", "IBM866", "HZ-GB-2312", "UTF-7"}) {
        const QTextCodec *codec = QTextCodec::codecForName(name);
        out << name << ' ' << (codec ? codec->fromUnicode(text).toHex() : "none") << ' '
            << (codec ? codec->toUnicode(codec->fromUnicode(text)) : QString()) << '\n';
    }
    for (const char *language : {"de", "sv", "en", "tr", "ru", "id", "C"}) {
        const QLocale locale(QString::fromLatin1(language));
        QStringList words =
            QStringLiteral("z Zürich ö o Öl ä a zebra å ı i I 中 文 я а").split(QLatin1Char(' '));
        std::sort(words.begin(), words.end(), QCollator(locale));
        out << language << ' ' << words.join(QLatin1Char(' ')) << ' '
            << locale.toUpper(QStringLiteral("izmir ıß")) << '\n';
    }
    const QTimeZone zone("Europe/Berlin");
    const QDateTime noon(QDate(2024, 7, 1), QTime(12, 0), zone);
    for (const char *language : {"de", "en_US", "ru", "id", "zh_TW"}) {
        out << language << ' ' << noon.toUTC().toString(Qt::ISODate) << ' '
            << zone.displayName(noon, QTimeZone::LongName, QLocale(QString::fromLatin1(language)))
            << '\n';
    }
    out << QUrl::toAce(QStringLiteral("bücher.例え")) << ' '
        << QStringLiteral("ﬁÅ").normalized(QString::NormalizationForm_KD) << '\n';
    return 0;
}
