#pragma once

#include <QString>

#include <cstdio>

// While it lives, debug lines reach a file one by one, as from a standard error output that leads
// there.
class LinesToFile {
public:
    LinesToFile()
        : m_usual(qInstallMessageHandler(write))
    {
    }
    ~LinesToFile() { qInstallMessageHandler(m_usual); }
    Q_DISABLE_COPY(LinesToFile)

private:
    static void write(QtMsgType, const QMessageLogContext &, const QString &line)
    {
        static std::FILE *const file = std::tmpfile();
        std::fprintf(file, "%s\n", qPrintable(line));
        std::fflush(file);
    }

    const QtMessageHandler m_usual;
};
