#pragma once

#include "ui/KvElidingComboBox.h"

/// The choice of the window's language, each under its own name. It is stored as soon as the person makes it, and
/// holds from the next start on.
class KvLanguageBox : public KvElidingComboBox
{
    Q_OBJECT

public:
    explicit KvLanguageBox(QWidget *parent = nullptr);
};
