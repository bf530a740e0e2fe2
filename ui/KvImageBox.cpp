#include "ui/KvImageBox.h"

#include "ui/KvRetinaLabel.h"

#include <QDialogButtonBox>
#include <QVBoxLayout>

KvImageBox::KvImageBox(const QString &picture, const QString &title, QWidget *parent) : QDialog(parent)
{
    setWindowTitle(title);
    auto *image = new KvRetinaLabel(this);
    image->setObjectName(QStringLiteral("image"));
    image->setPicture(picture);
    image->setAccessibleName(title);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(16);
    layout->addWidget(image);
    layout->addWidget(buttons);
}
