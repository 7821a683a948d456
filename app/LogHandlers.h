#pragma once

#include <QMessageLogContext>
#include <QString>

// Build-time switches (VORN_LOG_TO_FILE, VORN_LOG_EVERYTHING), both off in a delivered build; the
// program never assigns them.
extern bool isDebug; // main installs kqMessageOutput(), and debug messages keep their text there
extern bool openAllprint; // kqMessageOutput() keeps every message in "log.txt"

// Message handlers for qInstallMessageHandler(). Both may be called from any thread and open,
// append, flush and close their file for each message; a file that cannot be opened loses the
// message silently. Neither limits the size of its files.

// Writes warnings to "errorlog.txt" (with openAllprint: everything to "log.txt") beside the
// executable, and every message to standard output.
void kqMessageOutput(QtMsgType type, const QMessageLogContext &context, const QString &msg);

// Writes everything to "log.txt" in the working directory and nothing to standard output.
void outputMessage(QtMsgType type, const QMessageLogContext &context, const QString &msg);
