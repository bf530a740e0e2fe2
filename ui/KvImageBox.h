#pragma once

#include <QDialog>

/// A dialog that shows one picture of the resource and a button to close it.
class KvImageBox : public QDialog
{
    Q_OBJECT

public:
    KvImageBox(const QString &picture, const QString &title, QWidget *parent);
};
