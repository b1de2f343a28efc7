// SPDX-License-Identifier: MIT
// The console: text messages cut out of the stream and printed into its box as the window does. Byte 0: how the stream is
// cut into reads. The rest stands once for the stream itself, and once for frames of a stream without damage:
//   byte 0    7-6 not 0: a text frame; 5-0 else the module
//        1    length of the payload, which follows
#include "console/terminalview.h"
#include "console/textframes.h"
#include "fuzz/application.h"
#include "fuzz/input.h"
#include "protocol/extraction.h"

#include <QTextDocument>
#include <QTextEdit>

namespace {

using namespace protocol;

struct Sent {
    QByteArray stream;
    QStringList texts;
};

QStringList takeInPieces(const QByteArray &bytes, uint8_t seed)
{
    Pieces pieces(seed);
    FuzzInput input(reinterpret_cast<const uint8_t *>(bytes.constData()), static_cast<std::size_t>(bytes.size()));
    auto parser = TextFrames();
    QStringList texts;
    while (!input.isEmpty())
        texts += parser.take(input.bytes(pieces.next()));
    return texts;
}

// Whether a part of the frame is a frame: such a one may be taken for the whole.
bool holdsFrame(const QByteArray &frame)
{
    QList<frameData> frames;
    QByteArray remainder;
    quint32 partial = 0;
    for (int at = frame.indexOf(kSync0, 1); at > 0; at = frame.indexOf(kSync0, at + 1)) {
        extractFrames(frame.mid(at) + QByteArray(1, '\0'), frames, remainder, partial);
        if (!frames.isEmpty())
            return true;
    }
    return false;
}

Sent framesOf(FuzzInput input)
{
    Sent sent;
    while (!input.isEmpty()) {
        const uint8_t first = input.byte();
        const auto module = first >> 6 != 0 ? ModuleId::Text : static_cast<ModuleId>(first);
        const QByteArray payload = input.bytes(input.byte());
        const QByteArray frame = encodeFrame(module, 0, payload);
        if (holdsFrame(frame))
            continue;
        sent.stream += frame;
        if (module == ModuleId::Text)
            sent.texts += QString::fromLatin1(payload.constData(), payload.size());
    }
    return sent;
}

void print(const QStringList &texts)
{
    static auto *const box = new QTextEdit; // for the life of the program
    box->setPlainText(QString());
    TerminalView view(*box);
    int length = 0;
    for (const QString &text : texts) {
        view.print({text});
        length += text.size();
        require(box->document()->characterCount() <= length + 1, "no more on the screen than was sent");
    }
    view.print(texts);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *count, char ***arguments)
{
    makeApplication(count, arguments);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray closing = encodeFrame(ModuleId::Text, 0, "the end");
    FuzzInput input(data, size);
    const uint8_t seed = input.byte();
    const Sent sent = framesOf(input);
    require(takeInPieces(sent.stream + closing, seed) == sent.texts + QStringList("the end"), "every message, once");

    const QStringList texts = takeInPieces(input.bytes() + closing, seed);
    require(!texts.isEmpty() && texts.constLast().endsWith(QLatin1String("the end")), "no damage holds a message back");
    print(texts);
    return 0;
}
