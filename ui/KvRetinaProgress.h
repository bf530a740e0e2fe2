#pragma once

#include <QBasicTimer>
#include <QProgressBar>

/// A progress bar made of pictures: "track" is its groove, "fill" the part that is done, "done" the same once the
/// work has ended well, "glint" the light that runs along a bar with the property `moving` while it is on its way.
class KvRetinaProgress : public QProgressBar
{
    Q_OBJECT
    Q_PROPERTY(QString images READ images WRITE setImages)
    Q_PROPERTY(bool moving READ isMoving WRITE setMoving)

public:
    explicit KvRetinaProgress(QWidget *parent = nullptr);

    QString images() const { return m_images; }
    /// The resource name of the family, with "%1" for the part.
    void setImages(const QString &pattern);

    bool isMoving() const { return m_moving; }
    void setMoving(bool moving);

    /// Whether what the bar stands for is in place: a full bar is then drawn as "done", else like any other value.
    void setDone(bool done);

    QSize sizeHint() const override { return {160, 6}; }
    QSize minimumSizeHint() const override { return {20, 6}; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    bool isOnItsWay() const { return value() > minimum() && value() < maximum(); }

    QString m_images;
    QBasicTimer m_clock;
    int m_glint = 0; ///< per mille of the way that the glint has run
    bool m_moving = false;
    bool m_done = false;
};
