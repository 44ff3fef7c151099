#include "FileHandover.h"

#include "Dialogs.h"
#include "ImagePrint.h"
#include "NamedFiles.h"

#include <QImage>
#include <QPrinter>
#include <QUrl>

QString FileHandover::open(const QString& path)
{
    const bool isOpen = Dialogs::instance().openUrl(QUrl::fromLocalFile(path));
    return isOpen ? QString() : tr("No program opens %1.").arg(namedFiles({path}));
}

QString FileHandover::openFolder(const QString& folder)
{
    const bool isOpen = Dialogs::instance().openUrl(QUrl::fromLocalFile(folder));
    return isOpen ? QString() : tr("The folder %1 could not be opened.").arg(folder);
}

QString FileHandover::print(const QString& path, QWidget* parent)
{
    const QImage image(path);
    if (image.isNull())
        return tr("Only pictures can be printed.");
    QPrinter printer(QPrinter::HighResolution);
    ImagePrint::orient(printer, image);
    if (!Dialogs::instance().choosePrinter(printer, parent) || ImagePrint::print(printer, image))
        return {};
    return tr("The picture could not be printed.");
}
