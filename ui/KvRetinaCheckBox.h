#pragma once

#include <QCheckBox>

/// A check box or, within an exclusive group, a radio box whose mark is a picture: one for each of the states
/// "release", "hover", "press" and "disable", and the same four after "checked_". Its text stands beside the mark;
/// its accessible description, if it has one, as a second, smaller line below.
class KvRetinaCheckBox : public QCheckBox
{
    Q_OBJECT
    Q_PROPERTY(QString images READ images WRITE setImages)

public:
    explicit KvRetinaCheckBox(QWidget *parent = nullptr);

    QString images() const { return m_images; }
    /// The resource name of the family, with "%1" for the state.
    void setImages(const QString &pattern);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool hitButton(const QPoint &point) const override;
    void paintEvent(QPaintEvent *event) override;

private:
    QFont hintFont() const;
    QRect visual(const QRect &box) const;

    QString m_images;
};
