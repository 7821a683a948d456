#include "Support.h"
#include "app/QtTexts.h"
#include "settings/DataManager.h"

#include <QLibraryInfo>
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

QStringList languages()
{
    const QDir sources(VORN_SOURCE_DIR "/qml/internationalization");
    QStringList names = sources.entryList({"os_language_*.ts"});
    return names.replaceInStrings(QRegularExpression("^os_language_|\\.ts$"), "");
}

// What scenes and code ask the translator for.
QSet<Key> textsUsed()
{
    static const QRegularExpression call(
        R"(\b(?:qsTranslate|QT_TRANSLATE_NOOP|translate)\(\s*\x22(\w+)\x22,\s*\x22([^\x22]*)\x22)");
    QSet<Key> used;
    for (const char *folder : {"qml", "uninstaller", "app", "api", "installer"}) {
        QDirIterator files(QString(VORN_SOURCE_DIR "/") + folder, {"*.qml", "*.cpp"}, QDir::Files,
            QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString source = contentOf(files.next());
            for (auto found = call.globalMatch(source); found.hasNext();) {
                const QStringList match = found.next().capturedTexts();
                used.insert({match.at(1), QString(match.at(2)).replace("\\\\", "\\")});
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
        const Rows<QString> row;
        for (const QString &language : languages())
            row(qPrintable(language), language);
        QVERIFY(languages().contains("German"));
    }

    void everyTextIsTranslatedAndDrawable()
    {
        const QString language = Rows<QString>::fetch();
        QTranslator built;
        QVERIFY(built.load(":/internationalization/os_language_" + language));
        const QRawFont han(QString(":/fonts/vorn-subset.ttf"), 16);
        const QRawFont arabic(QString(":/fonts/vorn-subset-arabic.ttf"), 16);
        QString drawn = DataManager::getInstance()->getLanguageList().join("") + "%0123456789";

        const Catalogue catalogue = readCatalogue(language);
        QCOMPARE(catalogue.keys(), readCatalogue("English").keys());
        for (auto entry = catalogue.cbegin(); entry != catalogue.cend(); ++entry) {
            const auto &[context, source] = entry.key();
            QVERIFY2(!entry->trimmed().isEmpty(), qPrintable(source));
            QCOMPARE(built.translate(qPrintable(context), qPrintable(source)), *entry);
            for (const char *place : {"%1", "%2", "%3", "%4"})
                QCOMPARE(entry->count(place), source.count(place));
            const bool isPath = source == "/opt/VornVPN" || source.startsWith("C:\\");
            QVERIFY(*entry == source || !isPath);
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

    // What one language shows is not left behind in the next.
    void qtsOwnTextsFollowTheLanguage()
    {
        DataManager *settings = DataManager::getInstance();
        QObject owner;
        settings->changeLanguage(2);
        translateQtTexts(&owner);
        QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QString("Batal"));
        settings->changeLanguage(4);
        if (QFile::exists(
                QLibraryInfo::location(QLibraryInfo::TranslationsPath) + "/qtbase_de.qm")) {
            QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QString("Abbrechen"));
        }
        settings->changeLanguage(0);
        QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QString("Cancel"));
    }
};

QTEST_MAIN(TestTranslations)
#include "tst_translations.moc"
