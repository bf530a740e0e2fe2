#pragma once

#include <QLabel>

/// A label that shows one picture of the resource, sharp on every screen.
class KvRetinaLabel : public QLabel
{
    Q_OBJECT
    Q_PROPERTY(QString picture READ picture WRITE setPicture NOTIFY pictureChanged)

public:
    explicit KvRetinaLabel(QWidget *parent = nullptr);

    /// The resource name of the picture now shown.
    QString picture() const { return m_picture; }
    void setPicture(const QString &resource);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    void pictureChanged(const QString &resource);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_picture;
};
