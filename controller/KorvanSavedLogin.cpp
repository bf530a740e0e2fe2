#include "controller/Korvan.h"

#include "account/SavedLogin.h"
#include "ui_Korvan.h"

#include <QFile>

void Korvan::saveLogin()
{
    writeSavedLogin({m_form->edUser->text(), m_form->edPass->text()});
}

/// The service has accepted a login. The fields can be edited meanwhile; only what was used is kept.
void Korvan::rememberLogin()
{
    if (m_form->cbRember->isChecked() && m_form->edUser->text() == m_userName &&
        m_form->edPass->text() == m_password) {
        saveLogin();
    }
}

void Korvan::loadLogin()
{
    const SavedLogin login = readSavedLogin();
    m_form->edUser->setText(login.user);
    m_form->edPass->setText(login.password);
}

void Korvan::onRemember()
{
    if (!m_form->cbRember->isChecked()) {
        QFile::remove(savedLoginPath());
    }
    showBootHint();
}
