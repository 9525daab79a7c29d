#include "backends/qt/starting_messages.h"

#include "contract/backend/host.h"

#include <QString>
#include <QStringList>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace kirolane::qt {

namespace {

QStringList g_keptBack; // a message handler is a bare function

void Keep(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type != QtFatalMsg) {
        g_keptBack += qFormatLogMessage(type, context, text);
        return;
    }
    // The first message names the cause; the last one is advice for whoever built Qt.
    const QString cause = g_keptBack.isEmpty() ? text : g_keptBack.first();
    RefuseDesktop(cause.trimmed().toStdString());
}

} // namespace

void RefuseDesktop(const std::string& cause) {
    WriteErrorLine("start: no desktop to show windows on: " + cause);
    std::quick_exit(EXIT_FAILURE);
}

StartingMessages::StartingMessages() {
    qInstallMessageHandler(Keep);
}

StartingMessages::~StartingMessages() {
    qInstallMessageHandler(nullptr);
    for (const QString& line : std::exchange(g_keptBack, {}))
        std::fprintf(stderr, "%s\n", qPrintable(line));
}

} // namespace kirolane::qt
