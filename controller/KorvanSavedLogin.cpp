#include "controller/Korvan.h"

#include "account/SavedLogin.h"
#include "ui_Korvan.h"

void Korvan::saveLogin()
{
    writeSavedLogin({m_form->edUser->text(), m_form->edPass->text()});
}

void Korvan::loadLogin()
{
    const SavedLogin login = readSavedLogin();
    m_form->edUser->setText(login.user);
    m_form->edPass->setText(login.password);
}
