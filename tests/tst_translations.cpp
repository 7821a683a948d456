#include "Support.h"

#include <QRawFont>

namespace {

using Key = QPair<QString, QString>; // context, source text
using Catalogue = QMap<Key, QString>; // an unfinished entry has no translation

Catalogue readCatalogue(const QString &language)
{
    Catalogue catalogue;
    QXmlStreamReader xml(
        contentOf(VORN_SOURCE_DIR "/qml/internationalization/os_language_" + language + ".ts"));
    for (Key key; !xml.atEnd(); xml.readNext()) {
        if (xml.isStartElement() && xml.name() == "name")
            key.first = xml.readElementText();
        else if (xml.isStartElement() && xml.name() == "source")
            key.second = xml.readElementText();
        else if (xml.isStartElement() && xml.name() == "translation")
            catalogue[key] = xml.attributes().isEmpty() ? xml.readElementText() : QString();
    }
    return catalogue;
}

// What the scenes and the sources ask the translator for. qsTr() takes the file's name as context.
QSet<Key> textsUsed()
{
    static const QRegularExpression call(
        R"(\b(?:(?:qsTranslate|QT_TRANSLATE_NOOP)\(\s*"(\w+)["],\s*"|(?:qsTr|QT_TR_NOOP)\(\s*")([^"]*)["])");
    QSet<Key> used;
    for (const char *folder :
        {VORN_SOURCE_DIR "/qml", VORN_SOURCE_DIR "/uninstaller", VORN_SOURCE_DIR "/installer"}) {
        QDirIterator files(folder, {"*.qml", "*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString qml = contentOf(files.next());
            for (auto found = call.globalMatch(qml); found.hasNext();) {
                const QStringList match = found.next().capturedTexts();
                used.insert({match.at(1).isEmpty() ? files.fileInfo().baseName() : match.at(1),
                    QString(match.at(2)).replace("\\\\", "\\")});
            }
        }
    }
    return used;
}

} // namespace

class TestTranslations : public QObject {
    Q_OBJECT

private slots:
    void everyTextIsTranslatedAndDrawable_data()
    {
        const Table<QString> row;
        for (const char *language : {"English", "ChineseSimpilifed", "ChineseTraditional", "German",
                 "Indonesia", "Rusia", "Arab"})
            row(language, language);
    }

    void everyTextIsTranslatedAndDrawable()
    {
        const auto [language] = Table<QString>::fetch();
        QTranslator built;
        QVERIFY(built.load(":/internationalization/os_language_" + language));
        const QRawFont han(QString(":/fonts/vorn-subset.ttf"), 16);
        const QRawFont arabic(QString(":/fonts/vorn-subset-arabic.ttf"), 16);
        QString drawn("English中文繁體IndonesiaРусскийDeutsch%0123456789");

        const Catalogue catalogue = readCatalogue(language);
        QCOMPARE(catalogue.keys(), readCatalogue("English").keys());
        for (auto entry = catalogue.cbegin(); entry != catalogue.cend(); ++entry) {
            const auto &[context, source] = entry.key();
            QVERIFY2(!entry->trimmed().isEmpty(), qPrintable(source));
            QCOMPARE(built.translate(qPrintable(context), qPrintable(source)), *entry);
            QCOMPARE(entry->count("%1"), source.count("%1"));
            QVERIFY(*entry == source || !(source.contains('/') || source.contains('\\')));
            drawn += *entry;
        }
        for (const uint character : drawn.toUcs4())
            QVERIFY2(han.supportsCharacter(character) || arabic.supportsCharacter(character),
                qPrintable(QString::fromUcs4(&character, 1)));
    }

    void sceneAndCatalogueAgree()
    {
        static const QSet<QString> retired{"< Return", "Change path",
            "Directory:", "Enter some text...", "Low latency, no lag", "Simple,Easy,Stable",
            "New generation acceleration engine, adapt to multi-platform network"};
        QSet<Key> used = textsUsed();
        for (const Key &key : readCatalogue("English").keys())
            QVERIFY2(used.remove(key) || retired.contains(key.second),
                qPrintable("not shown: " + key.second));
        QVERIFY2(used.isEmpty(), qPrintable("not translated: " + used.values().value(0).second));
    }
};

QTEST_MAIN(TestTranslations)
#include "tst_translations.moc"
