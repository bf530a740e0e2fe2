#pragma once

#include "ui/Unasked.h"

#include <QDialog>

#include <memory>

namespace Ui {
class KvL2TPBox;
}

/// Asks for the password of an L2TP server and whether to keep it.
class KvL2TPBox : public Unasked<QDialog>
{
    Q_OBJECT

public:
    explicit KvL2TPBox(QWidget *parent);
    ~KvL2TPBox() override;

    QString password() const;
    bool isRemember() const;

private:
    std::unique_ptr<Ui::KvL2TPBox> m_form;
};
