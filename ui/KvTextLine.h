#pragma once

#include <QLabel>

/// One line of text, without the blanks at its ends. It is shortened in its middle where it does not fit; the whole
/// of it is then its tool tip. An empty text shows as a dash. With a caption it is a row: the caption at the left,
/// the text at the right. A text that begins with the caption takes its place.
class KvTextLine : public QLabel
{
    Q_OBJECT
    Q_PROPERTY(QString caption READ caption WRITE setCaption)

public:
    explicit KvTextLine(QWidget *parent = nullptr);

    QString caption() const { return m_caption; }
    void setCaption(const QString &caption);

    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool isCaptionItself() const { return text().startsWith(m_caption, Qt::CaseInsensitive); }
    QRect textBox() const;

    QString m_caption;
};
