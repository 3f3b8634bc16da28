#include "Models/SelfContainedSVG.h"

#include <QBuffer>
#include <QImageReader>
#include <QXmlStreamReader>

#include <algorithm>

namespace tessara {

namespace {

// Carried along, and no vector picture itself, which might name files in its turn.
bool isInlineRaster(QStringView address)
{
    const QLatin1String mark("base64,");
    const qsizetype start = address.lastIndexOf(mark);
    if (!address.trimmed().startsWith(QLatin1String("data:")) || start < 0)
        return false;
    QByteArray data = QByteArray::fromBase64(address.mid(start + mark.size()).toLatin1());
    QBuffer file(&data);
    file.open(QIODevice::ReadOnly);
    return !QImageReader::imageFormat(&file).startsWith("svg");
}

bool namesFile(const QXmlStreamAttributes &attributes)
{
    return std::any_of(attributes.begin(), attributes.end(), [](const auto &attribute) {
        return attribute.name() == QLatin1String("href") && !isInlineRaster(attribute.value());
    });
}

} // namespace

bool isSelfContainedSVG(const QByteArray &file)
{
    if (file.startsWith("\x1f\x8b")) // gzip, RFC 1952
        return false;
    QXmlStreamReader text(file);
    while (!text.atEnd()) {
        switch (text.readNext()) {
        case QXmlStreamReader::StartElement:
            if (text.name() == QLatin1String("image") && namesFile(text.attributes()))
                return false;
            break;
        case QXmlStreamReader::ProcessingInstruction:
            if (text.processingInstructionTarget() == QLatin1String("xml-stylesheet"))
                return false;
            break;
        default:
            break;
        }
    }
    return true; // as far as it can be read, and its reader comes no further
}

} // namespace tessara
