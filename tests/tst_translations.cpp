#include "Support.h"
#include "app/QtTexts.h"
#include "settings/DataManager.h"

#include <QLibraryInfo>
#include <QRawFont>

namespace {

using Key = QPair<QString, QString>; // context, source text
using Catalogue = QMap<Key, QString>; // an unfinished entry has no translation

Catalogue readCatalogue(const QString &name)
{
    Catalogue catalogue;
    QXmlStreamReader xml(contentOf(VORN_SOURCE_DIR "/qml/internationalization/" + name + ".ts"));
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

} // namespace

class TestTranslations : public QObject {
    Q_OBJECT

private slots:
    void everyTextIsTranslatedAndDrawable_data()
    {
        const Rows<QString> row;
        const QDir sources(VORN_SOURCE_DIR "/qml/internationalization");
        for (const QFileInfo &source : sources.entryInfoList({"os_language_*.ts"}))
            row(qPrintable(source.baseName()), source.baseName());
    }

    void everyTextIsTranslatedAndDrawable()
    {
        const QString name = Rows<QString>::fetch();
        QTranslator built;
        QVERIFY(built.load(":/internationalization/" + name));
        const QRawFont han(QString(":/fonts/vorn-subset.ttf"), 16);
        const QRawFont arabic(QString(":/fonts/vorn-subset-arabic.ttf"), 16);
        QString drawn = DataManager::getInstance()->getLanguageList().join("") + "%0123456789";

        const Catalogue catalogue = readCatalogue(name);
        QCOMPARE(catalogue.keys(), readCatalogue("os_language_English").keys());
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

    void everyTextThatIsAskedForIsInTheCatalogue()
    {
        static const QRegularExpression call(
            R"((?:qsTranslate|NOOP|translate)\(\s*\x22(\w+)\x22,\s*\x22([^\x22]*)\x22)");
        const Catalogue catalogue = readCatalogue("os_language_English");
        for (const char *folder : {"qml", "uninstaller", "app", "api", "installer"}) {
            QDirIterator files(QString(VORN_SOURCE_DIR "/") + folder, {"*.qml", "*.cpp"},
                QDir::Files, QDirIterator::Subdirectories);
            while (files.hasNext()) {
                const QString source = contentOf(files.next());
                for (auto found = call.globalMatch(source); found.hasNext();) {
                    const QStringList match = found.next().capturedTexts();
                    const Key key(match[1], QString(match[2]).replace("\\\\", "\\"));
                    QVERIFY2(catalogue.contains(key), qPrintable(key.second));
                }
            }
        }
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
