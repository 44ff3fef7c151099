#include "TsFile.h"

#include <QFile>
#include <QXmlStreamReader>

QVector<TsMessage> readTsFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QVector<TsMessage> messages;
    QString context;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("message")) {
            messages.append(TsMessage());
            messages.last().context = context;
        } else if (messages.isEmpty()) {
            continue; // the head of the file
        } else if (xml.name() == QLatin1String("source")) {
            messages.last().source = xml.readElementText();
        } else if (xml.name() == QLatin1String("comment")) {
            messages.last().comment = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            messages.last().state = xml.attributes().value(QLatin1String("type")).toString();
            messages.last().translation = xml.readElementText(QXmlStreamReader::IncludeChildElements);
        }
    }
    return xml.hasError() ? QVector<TsMessage>() : messages;
}
