#include "ui/paint/Glyphs.h"

#include <QStringList>

namespace {

// Each sign is a list of steps: M x y moves, L x y draws a line, C x1 y1 x2 y2 x y a curve, A x y radius start sweep
// an arc about (x, y) in degrees counter-clockwise from the right, O x y radius a circle, R x y width height a
// rectangle, Z closes.
struct Sign
{
    const char *name;
    const char *steps;
};

constexpr Sign kSigns[] = {
    {"activity", "M 2 12 L 6 12 L 9 4 L 15 20 L 18 12 L 22 12"},
    {"arrows", "M 4 7 L 20 7 M 16 3 L 20 7 M 20 17 L 4 17 M 4 17 L 8 21"},
    {"check", "M 5 12.5 L 10 17.5 L 19 7"},
    {"chevron", "M 6 9.5 L 12 15.5 L 18 9.5"},
    {"close", "M 7 7 L 17 17 M 17 7 L 7 17"},
    {"dashboard", "R 3 3 7 9 R 14 3 7 5 R 14 12 7 9 R 3 16 7 5"},
    {"gear", "O 12 12 3.6 M 12 2 L 12 4.4 M 12 19.6 L 12 22 M 2 12 L 4.4 12 M 19.6 12 L 22 12 "
             "M 4.9 4.9 L 6.6 6.6 M 17.4 17.4 L 19.1 19.1 M 4.9 19.1 L 6.6 17.4 M 17.4 6.6 L 19.1 4.9"},
    {"help", "M 7.8 8 C 8 5.4 9.6 4 12 4 C 14.5 4 16.2 5.5 16.2 7.8 C 16.2 11 12 11.2 12 14.6 "
             "M 12 19.4 L 12 19.5"},
    {"information", "M 12 11 L 12 17.5 M 12 6.6 L 12 6.7"},
    {"exclamation", "M 12 6.5 L 12 13 M 12 17.4 L 12 17.5"},
    {"lines", "M 4 5 L 20 5 M 4 12 L 20 12 M 4 19 L 14 19"},
    {"minimize", "M 7 12 L 17 12"},
    {"reload", "A 12 12 8.5 35 290 M 19.6 3.6 L 19.2 8 L 14.8 7.6"},
    {"shield", "M 12 22 C 12 22 20 18.4 20 12 L 20 5 L 12 2 L 4 5 L 4 12 C 4 18.4 12 22 12 22 Z"},
    {"shieldcheck", "M 12 22 C 12 22 20 18.4 20 12 L 20 5 L 12 2 L 4 5 L 4 12 C 4 18.4 12 22 12 22 Z "
                    "M 8.4 12 L 11 14.6 L 15.8 9.4"},
    {"shieldcross", "M 12 22 C 12 22 20 18.4 20 12 L 20 5 L 12 2 L 4 5 L 4 12 C 4 18.4 12 22 12 22 Z "
                    "M 9.4 9 L 14.6 14.4 M 14.6 9 L 9.4 14.4"},
    {"shieldopen", "M 20 9 L 20 5 L 12 2 L 4 5 L 4 12 C 4 18.4 12 22 12 22 C 12 22 18 19.4 19.5 14.4"},
    {"sortdown", "M 12 5 L 12 19 M 6 13.5 L 12 19 L 18 13.5"},
    {"sortup", "M 12 19 L 12 5 M 6 10.5 L 12 5 L 18 10.5"},
    {"user", "O 12 8 4 M 4 21 C 4 16.6 7.4 14.4 12 14.4 C 16.6 14.4 20 16.6 20 21"},
};

class Steps
{
public:
    explicit Steps(const char *text) : m_words(QString::fromLatin1(text).split(QLatin1Char(' '))) {}

    bool atEnd() const { return m_next == m_words.size(); }
    QChar step() { return m_words.at(m_next++).at(0); }
    qreal number() { return m_words.at(m_next++).toDouble(); }
    QPointF point()
    {
        const qreal x = number();
        return {x, number()};
    }

private:
    QStringList m_words;
    int m_next = 0;
};

void addStep(QPainterPath &path, Steps &steps)
{
    switch (steps.step().toLatin1()) {
    case 'M':
        path.moveTo(steps.point());
        break;
    case 'L':
        path.lineTo(steps.point());
        break;
    case 'C': {
        const QPointF first = steps.point();
        const QPointF second = steps.point();
        path.cubicTo(first, second, steps.point());
        break;
    }
    case 'A': {
        const QPointF centre = steps.point();
        const qreal radius = steps.number();
        const QRectF box(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
        const qreal start = steps.number();
        path.arcMoveTo(box, start);
        path.arcTo(box, start, steps.number());
        break;
    }
    case 'O': {
        const QPointF centre = steps.point();
        const qreal radius = steps.number();
        path.addEllipse(centre, radius, radius);
        break;
    }
    case 'R': {
        const QPointF corner = steps.point();
        const qreal width = steps.number();
        path.addRoundedRect(QRectF(corner, QSizeF(width, steps.number())), 1, 1);
        break;
    }
    default:
        path.closeSubpath();
    }
}

} // namespace

QPainterPath glyph(const char *name)
{
    for (const Sign &sign : kSigns) {
        if (qstrcmp(sign.name, name) == 0) {
            QPainterPath path;
            Steps steps(sign.steps);
            while (!steps.atEnd()) {
                addStep(path, steps);
            }
            return path;
        }
    }
    qFatal("no sign \"%s\"", name);
}
