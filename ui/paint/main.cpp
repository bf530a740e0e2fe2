// Paints every picture of the window, light and dark, at 1x and 2x, into a folder, and writes the resource
// description beside them. Usage: korvan_paint FOLDER

#include "ui/paint/Pictures.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>

#include <cstdio>

namespace {

// Paints one file; an empty name when it could not be written.
QString write(const Picture &picture, const QDir &folder, int scale)
{
    QImage image(picture.width * scale, picture.height * scale, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    picture.paint(painter);
    painter.end();

    QString file = picture.name + (scale == 2 ? QStringLiteral("@2x.png") : QStringLiteral(".png"));
    const QString path = folder.filePath(file);
    if (!folder.mkpath(QFileInfo(file).path()) || !image.save(path)) {
        std::fprintf(stderr, "korvan_paint: can not write \"%s\"\n", qPrintable(path));
        return {};
    }
    return file;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: korvan_paint FOLDER\n");
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    QByteArray resource = "<RCC><qresource prefix=\"/\">\n";
    for (const auto &[look, prefix] : {std::pair(kLightPalette, ""), {kDarkPalette, "dark/"}}) {
        std::vector<Picture> pictures = controlPictures(look);
        for (const Picture &icon : iconPictures(look)) {
            pictures.push_back(icon);
        }
        for (Picture &picture : pictures) {
            picture.name.prepend(QLatin1String(prefix));
            for (const int scale : {1, 2}) {
                const QString file = write(picture, folder, scale);
                if (file.isEmpty()) {
                    return 1;
                }
                resource += "<file>" + file.toUtf8() + "</file>\n";
            }
        }
    }
    resource += "</qresource></RCC>\n";
    QFile description(folder.filePath(QStringLiteral("pictures.qrc")));
    if (!description.open(QIODevice::WriteOnly) || description.write(resource) != resource.size()) {
        std::fprintf(stderr, "korvan_paint: can not write \"%s\"\n", qPrintable(description.fileName()));
        return 1;
    }
    return 0;
}
