#include "ui/Mnemonics.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QProxyStyle>
#include <QSet>

static bool s_altIsHeld = false;

namespace {

constexpr int kBoxPicture = 40;

/// Nothing but words on the buttons of boxes, letters underlined only while they are of use, and the pictures of
/// boxes in their own size at each scale.
class Style : public QProxyStyle
{
public:
    using QProxyStyle::QProxyStyle;

    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override
    {
        return metric == PM_MessageBoxIconSize ? kBoxPicture : QProxyStyle::pixelMetric(metric, option, widget);
    }

    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *result) const override
    {
        if (hint == SH_DialogButtonBox_ButtonsHaveIcons) {
            return 0;
        }
        return hint == SH_UnderlineShortcut ? s_altIsHeld : QProxyStyle::styleHint(hint, option, widget, result);
    }
};

class AltWatch : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const QEvent::Type type = event->type();
        if (type == QEvent::KeyPress || type == QEvent::KeyRelease) {
            if (static_cast<QKeyEvent *>(event)->key() == Qt::Key_Alt) {
                show(type == QEvent::KeyPress);
            }
        } else if (type == QEvent::WindowDeactivate) {
            show(false); // its release goes to another window
        }
        return QObject::eventFilter(watched, event);
    }

private:
    static void show(bool held)
    {
        if (s_altIsHeld != held) {
            s_altIsHeld = held;
            for (QWidget *widget : QApplication::allWidgets()) {
                widget->update();
            }
        }
    }
};

/// The place in the text of a letter that is free and on a key; the first of a word if there is one. -1 without any.
int freeLetter(const QString &text, const QSet<QChar> &taken)
{
    int found = -1;
    for (int at = 0; at < text.size(); ++at) {
        const QChar letter = text.at(at).toLower();
        if (!letter.isLetter() || letter.script() == QChar::Script_Han || taken.contains(letter)) {
            continue;
        }
        if (at == 0 || text.at(at - 1).isSpace()) {
            return at;
        }
        found = found < 0 ? at : found;
    }
    return found;
}

} // namespace

QStyle *styleWithMnemonics(QStyle *base, QApplication &application)
{
    application.installEventFilter(new AltWatch(&application));
    return new Style(base);
}

void assignMnemonics(const QWidget *page)
{
    QSet<QChar> taken;
    for (QWidget *control : page->findChildren<QWidget *>()) {
        const auto *label = qobject_cast<const QLabel *>(control);
        QString text = control->property("text").toString();
        if (text.contains(QLatin1Char('&')) || !(label ? label->buddy() : qobject_cast<QAbstractButton *>(control))) {
            continue;
        }
        const int at = freeLetter(text, taken);
        if (at >= 0) {
            taken += text.at(at).toLower();
            control->setProperty("text", text.insert(at, QLatin1Char('&')));
        }
    }
}

int mnemonicFlag()
{
    return s_altIsHeld ? Qt::TextShowMnemonic : Qt::TextHideMnemonic;
}
