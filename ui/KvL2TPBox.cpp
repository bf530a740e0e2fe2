#include "ui/KvL2TPBox.h"

#include "ui_KvL2TPBox.h"

KvL2TPBox::KvL2TPBox(QWidget *parent) : Unasked(parent), m_form(std::make_unique<Ui::KvL2TPBox>())
{
    m_form->setupUi(this);
    connect(m_form->btnOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_form->btnCancel, &QPushButton::clicked, this, &QDialog::reject);
}

KvL2TPBox::~KvL2TPBox() = default;

QString KvL2TPBox::password() const
{
    return m_form->edPass->text();
}

bool KvL2TPBox::isRemember() const
{
    return m_form->ckRem->isChecked();
}
