#include "SetAbout.h"

#include "ui_SetAbout.h"

#include <QIcon>

SetAbout::SetAbout(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui_SetAbout>())
{
    ui_->setupUi(this);
    ui_->labelNumber->setText(QStringLiteral(LUMRO_VERSION));
    const QIcon logo(QStringLiteral(":/images/common/images/common/lumro.png"));
    ui_->labelLogo->setPixmap(logo.pixmap(ui_->labelLogo->maximumSize()));
}

SetAbout::~SetAbout() = default;
