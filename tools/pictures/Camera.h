#pragma once

#include <QByteArray>
#include <QMap>
#include <QRect>
#include <QSize>
#include <QString>

class QImage;
class QWidget;

/// A picture as it stands in the guide.
struct Picture
{
    QByteArray png;
    QSize size; ///< as shown [px]; the PNG itself may be finer
};

/// Takes pictures of widgets, shown or not, and keeps them under their names.
class Camera
{
public: // queries
    [[nodiscard]] const QMap<QString, Picture>& pictures() const;

public: // commands
    /// All of `widget`, with `fineness` pixels to one of the screen.
    void take(const QString& name, QWidget* widget, double fineness = FINE);
    /// The part `area` of `widget` [px of the widget].
    void take(const QString& name, QWidget* widget, const QRect& area, double fineness = FINE);
    /// `image`, shown in `size`.
    void keep(const QString& name, const QImage& image, const QSize& size);

public: // how fine a picture is
    static constexpr double FINE = 2.0;
    static constexpr double PLAIN = 1.0;

private: // data
    QMap<QString, Picture> m_pictures;
};
