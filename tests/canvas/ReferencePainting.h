#pragma once

#include "engine/LoadLogic.h"

#include <QImage>
#include <QPainter>

#include <cmath>

/// The drawing a second time, written down plainly and independently of the canvas: every call of the
/// painter in its order, with its numbers in place. Pictures of the canvas must equal it to the pixel.
class ReferencePainting
{
public: // construction
    ReferencePainting(QPainter& target, int targetWidth, int targetHeight, double targetScale)
        : p(target)
        , W(targetWidth)
        , H(targetHeight)
        , s(targetScale)
        , m(k(80))
        , span(W - 2 * m)
        , yT(H / 2)
        , L(LoadLogic::TrussLength)
    {
    }

public: // the state of the canvas
    bool print = false;
    bool blinkOn = false;
    int selectedLoadId = -1;

public: // commands
    void onScreen()
    {
        p.fillRect(0, 0, W, H, QColor(print ? "#ffffff" : "#121212"));
        truss();
        loads();
        motors();
        stressLabel();
        if (LoadLogic::isUnstable && blinkOn)
            warning();
    }
    void inReport()
    {
        truss();
        motors();
        loads();
        stressLabel();
    }
    void inRectangle()
    {
        truss();
        loads();
        motors();
        stressLabel();
    }

private: // numbers
    [[nodiscard]] int k(double length) const
    {
        return static_cast<int>(length * s);
    }
    [[nodiscard]] int along(float x) const
    {
        return static_cast<int>((x / L) * static_cast<float>(span));
    }
    [[nodiscard]] QColor colour(const char* screen, const char* paper) const
    {
        return QColor(QLatin1String(print ? paper : screen));
    }
    [[nodiscard]] QFont font(int points, int weight) const
    {
        QFont f(QStringLiteral("Monospace"), k(points));
        f.setWeight(static_cast<QFont::Weight>(weight));
        return f;
    }
    static QString number(float value, int decimals)
    {
        return QString::number(static_cast<double>(value), 'f', decimals);
    }
    void text(int left, int top, int width, int height, const QString& words)
    {
        p.drawText(QRect(left, top, width, height), Qt::AlignCenter, words);
    }

private: // the elements
    void truss()
    {
        QColor chord = colour("#00BFFF", "black");
        if (LoadLogic::isUnstable || LoadLogic::TrussStress_Percentage >= 100.0F)
            chord = Qt::red;
        else if (LoadLogic::TrussStress_Percentage >= 80.0F)
            chord = QColor(0xFF, 0xAF, 0x00);
        p.setPen(QPen(chord, k(4), Qt::SolidLine));
        p.drawLine(m, yT, W - m, yT);

        p.setPen(QPen(colour("white", "black"), k(2)));
        p.drawLine(m, yT - k(25), m, yT + k(25));
        p.drawLine(W - m, yT - k(25), W - m, yT + k(25));

        const int yD = yT - k(130);
        p.setFont(font(9, 700));
        p.setPen(QPen(colour("#00BFFF", "black"), k(1)));
        text(m, yD - k(22), span, k(25),
             QStringLiteral("LONGITUD TOTAL: ") + number(L, 1) + QStringLiteral("m"));
        p.drawLine(m, yD + k(7), W - m, yD + k(7));
        p.drawLine(m, yD, m, yD + k(14));
        p.drawLine(W - m, yD, W - m, yD + k(14));

        p.setPen(QPen(print ? QColor(Qt::gray) : QColor(0x44, 0x44, 0x44), k(1), Qt::DashLine));
        p.drawLine(W / 2, yT - k(40), W / 2, yT + k(40));

        p.setPen(QPen(colour("#444444", "#CCCCCC"), k(1), Qt::SolidLine));
        if (L - 0.01F > 0.0F) {
            for (float i = 0.0F; i < L - 0.01F; i += 1.0F) {
                const float e = std::min(L, i + 1.0F);
                p.drawLine(m + along(i), yT - k(10), m + along(e), yT + k(10));
                p.drawLine(m + along(i), yT + k(10), m + along(e), yT - k(10));
            }
        }

        const int xC = m + span / 2;
        p.setPen(QPen(colour("#BBBBBB", "#888888"), k(1), Qt::DashLine));
        p.drawLine(xC, yT - k(30), xC, yT + k(30));
        p.setFont(font(8, 700));
        text(xC - k(30), yT - k(90), k(60), k(15), QStringLiteral("0.0m"));
    }

    void loads()
    {
        for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads)) {
            if (load.type == QStringLiteral("Video") || load.type == QStringLiteral("Video_Segment"))
                screen(load);
            else
                pointLoad(load);
        }
    }

    void pointLoad(const LoadLogic::ActiveLoad& load)
    {
        const int lx = m + along(load.positionX);
        const bool selected = load.id == selectedLoadId;
        QColor outline = selected ? QColor(Qt::cyan) : QColor(Qt::yellow);
        QColor fill = selected ? QColor(0, 0, 0, 0) : QColor(255, 0, 34, 255);
        if (print) {
            outline = Qt::black;
            fill = Qt::transparent;
        }
        p.setPen(QPen(outline, selected && !print ? k(3) : k(2)));
        p.setBrush(fill);
        QPolygon triangle;
        triangle << QPoint(lx - k(15), yT + k(5)) << QPoint(lx + k(15), yT + k(5)) << QPoint(lx, yT + k(30));
        p.drawPolygon(triangle, Qt::OddEvenFill);

        p.setPen(colour("white", "black"));
        p.setFont(font(8, 700));
        text(lx - k(40), yT + k(75), k(80), k(15),
             load.name.isEmpty() ? QStringLiteral("L") + QString::number(load.id) : load.name);
        p.setPen(colour("#00FFFF", "black"));
        p.setFont(font(7, 400));
        text(lx - k(40), yT + k(90), k(80), k(12), number(load.mass, 0) + QStringLiteral("kg"));
        p.setPen(colour("#AAAAAA", "black"));
        p.setFont(font(6, 400));
        text(lx - k(40), yT + k(102), k(80), k(10), LoadLogic::formatCoordinate(load.positionX));
    }

    void screen(const LoadLogic::ActiveLoad& segment)
    {
        float sum = 0.0F;
        float w = 0.0F;
        int n = 0;
        bool selected = false;
        for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads)) {
            if (load.groupId != segment.groupId)
                continue;
            ++n;
            sum += load.positionX;
            if (w == 0.0F)
                w = load.screenWidth;
            selected = selected || (selectedLoadId != -1 && load.id == selectedLoadId);
        }
        const float c = sum / static_cast<float>(n);
        const float a = c - w * 0.5F;
        const float b = c + w * 0.5F;
        const int xa = along(a);
        const int xb = along(b);
        QColor frameColour = selected ? QColor(Qt::white) : QColor(0, 255, 255);
        if (print)
            frameColour = QColor(0x88, 0x88, 0x88);
        const QRect frame(m + xa, yT + k(5), xb - xa, k(40));
        p.setPen(QPen(frameColour, selected && !print ? 2.0 * s : 1.0 * s));
        p.setBrush(Qt::NoBrush);
        p.drawRect(frame);

        if (!print) {
            QPen metres(QColor(0, 255, 255, 130), s, Qt::CustomDashLine);
            metres.setDashPattern({2.0, 5.0});
            p.setPen(metres);
            for (float metre = std::ceil(a + 0.001F); metre < b - 0.001F; metre += 1.0F) {
                const int x = along(metre);
                if (xa < x && x < xb)
                    p.drawLine(m + x, yT + k(5), m + x, yT + k(5) + k(40));
            }
        }

        p.setFont(font(8, 700));
        QRect box = p.fontMetrics().boundingRect(QStringLiteral("LED"));
        box.moveCenter(QPoint(frame.left() + (xb - xa) / 2, frame.top() + k(40) / 2));
        box.adjust(-3, -1, 3, 1);
        if (!print)
            p.fillRect(box, QColor(0, 0, 0, 90));
        p.setPen(print ? QColor(Qt::black) : frameColour);
        p.setBrush(Qt::NoBrush);
        p.drawText(frame, Qt::AlignCenter, QStringLiteral("LED"));
    }

    void motors()
    {
        for (const LoadLogic::Motor& motor : std::as_const(LoadLogic::MotorList))
            drawMotor(motor);
    }

    void drawMotor(const LoadLogic::Motor& motor)
    {
        const int mx = m + along(motor.positionX);
        const int b = k(70);
        const int h = b / 2;
        const float dyn = (motor.staticLoad + motor.selfWeight) * 1.25F;
        const bool overloaded = dyn > motor.capacity || motor.staticLoad > motor.capacity;
        QColor status(0x39, 0xFF, 0x14);
        if (overloaded)
            status = Qt::red;
        else if (dyn >= 0.8F * motor.capacity)
            status = QColor(0xFF, 0xAF, 0x00);

        p.setPen(QPen(colour("#333333", "black"), k(1)));
        p.setBrush(print ? QColor(Qt::white) : QColor(QLatin1String(overloaded ? "#440000" : "#222222")));
        p.drawRect(QRect(mx - h, yT - b, b, b));
        p.setPen(QPen(colour("white", "black"), k(1)));
        p.drawRect(QRect(mx - k(12), yT - k(51), k(24), k(10)));
        p.drawLine(mx, yT - k(51), mx, yT - k(65));
        p.drawArc(QRectF(mx - k(4), yT - k(69), k(8), k(8)), 0, 180 * 16);
        p.drawRect(QRect(mx - k(6), yT - k(41), k(12), k(16)));
        p.setPen(QPen(QColor(0xAA, 0xAA, 0xAA), k(1)));
        p.drawLine(mx, yT - k(30), mx, yT - h);

        QString load = number(motor.staticLoad, 0) + QStringLiteral("kg");
        if (print)
            load += QStringLiteral(" (") + number(motor.capacity, 0) + QStringLiteral(")");
        const QRect label(mx - k(90) / 2, yT - k(105), k(90), k(18));
        p.setPen(Qt::NoPen);
        p.setBrush(Qt::black);
        p.drawRect(label);
        p.setPen(!print && overloaded && !blinkOn ? QColor(Qt::transparent) : status);
        p.setFont(font(9, 700));
        p.drawText(label, Qt::AlignCenter, load);

        if (!print) {
            p.setPen(QColor(0x88, 0x88, 0x88));
            p.setFont(font(7, 400));
            text(mx - k(50), yT - k(78), k(100), k(15),
                 QStringLiteral("Punto: ") + number(motor.totalLoad, 0) + QStringLiteral("kg"));
        }

        const int t = b - k(4);
        const QRect tag(mx - t / 2, yT - k(2) - k(14), t, k(14));
        p.setBrush(colour("black", "white"));
        p.setPen(QPen(colour("white", "black"), k(1)));
        p.drawRect(tag);
        p.setPen(colour("white", "black"));
        p.setFont(font(7, 700));
        p.drawText(tag, Qt::AlignCenter,
                   motor.modelName.isEmpty() ? QStringLiteral("M") + QString::number(motor.id)
                                             : motor.modelName);
        p.setPen(colour("#AAAAAA", "black"));
        p.setFont(font(7, 400));
        text(mx - k(90) / 2, yT - k(105) - k(14), k(90), k(13), LoadLogic::formatCoordinate(motor.positionX));
    }

    void stressLabel()
    {
        p.setPen(colour("#00BFFF", "black"));
        p.setFont(font(10, 700));
        text(m + span / 2 - k(80), yT + k(125), k(160), k(25),
             QStringLiteral("Flexión: ") + number(LoadLogic::TrussStress_Percentage, 1)
                 + QStringLiteral("%"));
    }

    void warning()
    {
        p.save();
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(255, 0, 0, 180));
        p.drawRect(QRect(0, 0, W, H));
        p.setPen(Qt::white);
        p.setFont(QFont(QStringLiteral("Arial"), 24, 700));
        p.drawText(QRect(0, 0, W, H), Qt::AlignCenter,
                   QStringLiteral("\u26A0\uFE0F PELIGRO DE VUELCO - SISTEMA INESTABLE\n"
                                  "Distribución de motores inválida: Exceso de voladizo."));
        p.restore();
    }

private: // data
    QPainter& p;
    int W;
    int H;
    double s;
    int m;
    int span;
    int yT;
    float L;
};
