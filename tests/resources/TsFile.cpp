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
            messages.last().counts = xml.attributes().hasAttribute(QLatin1String("numerus"));
        } else if (messages.isEmpty()) {
            continue; // the head of the file
        } else if (xml.name() == QLatin1String("source")) {
            messages.last().source = xml.readElementText();
        } else if (xml.name() == QLatin1String("comment")) {
            messages.last().comment = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            messages.last().state = xml.attributes().value(QLatin1String("type")).toString();
            if (!messages.last().counts)
                messages.last().forms.append(xml.readElementText());
        } else if (xml.name() == QLatin1String("numerusform")) {
            messages.last().forms.append(xml.readElementText());
        }
    }
    for (TsMessage& message : messages)
        message.translation = message.forms.value(0);
    return xml.hasError() ? QVector<TsMessage>() : messages;
}
