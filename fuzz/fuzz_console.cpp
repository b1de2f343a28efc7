// SPDX-License-Identifier: MIT
// The console: text messages cut out of the stream, and their control sequences carried out in a text box. Byte 0: how
// the rest is cut.
#include "console/terminalview.h"
#include "console/textframes.h"
#include "fuzz/application.h"
#include "fuzz/input.h"

#include <QTextDocument>
#include <QTextEdit>

namespace {

// As many zeros as are always parsed: nothing short stays unread at the end.
const QByteArray kClosing(16, '\0');

QStringList takeInPieces(const QByteArray &bytes, uint8_t seed)
{
    Pieces pieces(seed);
    FuzzInput input(reinterpret_cast<const uint8_t *>(bytes.constData()), static_cast<std::size_t>(bytes.size()));
    TextFrames frames;
    QStringList texts;
    while (!input.isEmpty())
        texts += frames.take(input.bytes(pieces.next()));
    return texts + frames.take(kClosing);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *count, char ***arguments)
{
    makeApplication(count, arguments);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static auto *const box = new QTextEdit; // for the life of the program
    box->setPlainText(QString());
    FuzzInput input(data, size);
    const uint8_t seed = input.byte();
    const QByteArray bytes = input.bytes();
    const QStringList texts = takeInPieces(bytes, seed);
    require(texts == takeInPieces(bytes, 0), "the same messages however they arrive");
    TerminalView view(*box);
    int length = 0;
    for (const QString &text : texts) {
        view.print(text);
        length += text.size();
        require(box->document()->characterCount() <= length + 1, "no more on the screen than was sent");
    }
    return 0;
}
