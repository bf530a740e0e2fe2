#pragma once

#include <QPushButton>

/// A push button whose body is a picture, one for each of the states "release", "hover", "press" and "disable"; the
/// words on it are its own text. On a dark body they are white, on a light one ink; a button whose picture has no
/// body is a link, in the colour of the style sheet. Without a text the picture stands alone. Return presses it, too.
class KvRetinaButton : public QPushButton
{
    Q_OBJECT
    Q_PROPERTY(QString images READ images WRITE setImages)

public:
    explicit KvRetinaButton(QWidget *parent = nullptr);

    QString images() const { return m_images; }
    /// The resource name of the family, with "%1" for the state.
    void setImages(const QString &pattern);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QColor textColour() const;

    QString m_images;
    QColor m_body; ///< of the picture's middle in the state "release"
};
