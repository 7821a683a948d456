#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRawFont>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <QTranslator>
#include <QXmlStreamReader>

namespace {

using Key = QPair<QString, QString>; // context, source text
using Catalogue = QMap<Key, QString>; // an unfinished entry has no translation

QString readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

Catalogue readCatalogue(const QString &language)
{
    Catalogue catalogue;
    QXmlStreamReader xml(
        readAll(VORN_SOURCE_DIR "/qml/internationalization/os_language_" + language + ".ts"));
    Key key;
    while (!xml.atEnd()) {
        const bool isStart = xml.readNext() == QXmlStreamReader::StartElement;
        if (isStart && xml.name() == QLatin1String("name")) {
            key.first = xml.readElementText();
        } else if (isStart && xml.name() == QLatin1String("source")) {
            key.second = xml.readElementText();
        } else if (isStart && xml.name() == QLatin1String("translation")) {
            const bool isOpen = xml.attributes().hasAttribute(QLatin1String("type"));
            catalogue.insert(key, isOpen ? QString() : xml.readElementText());
        }
    }
    return catalogue;
}

// What the QML below `folder` asks the translator for. qsTr() takes the file's name as context.
QSet<Key> textsUsedBelow(const QString &folder)
{
    static const QRegularExpression call(
        R"(\b(?:(?:qsTranslate|QT_TRANSLATE_NOOP)\(\s*"(\w+)["],\s*"|(?:qsTr|QT_TR_NOOP)\(\s*")([^"]*)["])");
    QSet<Key> used;
    QDirIterator files(folder, {"*.qml"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString qml = readAll(files.next());
        for (auto found = call.globalMatch(qml); found.hasNext();) {
            const QRegularExpressionMatch match = found.next();
            const QString context = match.captured(1);
            used.insert({context.isEmpty() ? files.fileInfo().baseName() : context,
                match.captured(2).replace(QLatin1String("\\\\"), QLatin1String("\\"))});
        }
    }
    return used;
}

} // namespace

class TestTranslations : public QObject {
    Q_OBJECT

private slots:
    void everyTextIsTranslatedAndDrawable_data();
    void everyTextIsTranslatedAndDrawable();
    void sceneAndCatalogueAgree();
};

void TestTranslations::everyTextIsTranslatedAndDrawable_data()
{
    QTest::addColumn<QString>("language");
    for (const char *language : {"English", "ChineseSimpilifed", "ChineseTraditional", "German",
             "Indonesia", "Rusia", "Arab"}) {
        QTest::newRow(language) << QString::fromLatin1(language);
    }
}

void TestTranslations::everyTextIsTranslatedAndDrawable()
{
    QFETCH(QString, language);
    QTranslator built;
    QVERIFY(built.load(":/internationalization/os_language_" + language));
    const QRawFont han(QStringLiteral(":/fonts/vorn-subset.ttf"), 16);
    const QRawFont arabic(QStringLiteral(":/fonts/vorn-subset-arabic.ttf"), 16);
    QString drawn = QString::fromUtf8("English中文繁體IndonesiaРусскийDeutsch%0123456789");

    const Catalogue catalogue = readCatalogue(language);
    QCOMPARE(catalogue.keys(), readCatalogue("English").keys());
    for (auto entry = catalogue.cbegin(); entry != catalogue.cend(); ++entry) {
        const auto &[context, source] = entry.key();
        QVERIFY2(!entry->trimmed().isEmpty(), qPrintable(source));
        QCOMPARE(built.translate(qPrintable(context), qPrintable(source)), *entry);
        QCOMPARE(entry->count(QLatin1String("%1")), source.count(QLatin1String("%1")));
        if (source.contains(QRegularExpression(QString::fromLatin1(R"([/\\])")))) {
            QCOMPARE(*entry, source); // a path
        }
        drawn += *entry;
    }
    const QVector<uint> characters = drawn.toUcs4();
    for (const uint character : characters) {
        QVERIFY2(han.supportsCharacter(character) || arabic.supportsCharacter(character),
            qPrintable(QString::fromUcs4(&character, 1)));
    }
}

void TestTranslations::sceneAndCatalogueAgree()
{
    static const QSet<QString> retired{"< Return", "Change path",
        "Directory:", "Enter some text...", "Low latency, no lag", "Simple,Easy,Stable",
        "New generation acceleration engine, adapt to multi-platform network"};
    QSet<Key> used = textsUsedBelow(VORN_SOURCE_DIR "/qml");
    const QSet<Key> uninstall = textsUsedBelow(VORN_SOURCE_DIR "/packaging/uninstall");
    used.unite(uninstall);
    const QList<Key> known = readCatalogue("English").keys();
    for (const Key &key : known) {
        const bool isAhead = key.first == QLatin1String("uninstall") && uninstall.isEmpty();
        QVERIFY2(used.remove(key) || retired.contains(key.second) || isAhead,
            qPrintable("not shown: " + key.second));
    }
    QVERIFY2(used.isEmpty(), qPrintable("not translated: " + used.values().value(0).second));
}

QTEST_MAIN(TestTranslations)
#include "tst_translations.moc"
