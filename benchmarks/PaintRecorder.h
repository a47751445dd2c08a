#pragma once

#include <QBrush>
#include <QFont>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPen>

#include <functional>
#include <memory>
#include <vector>

class QPainter;

/// Takes down what is painted on it as plain `QPainter` calls, with pens, brushes, fonts, texts and
/// coordinates ready: the least work that can make the same picture.
class PaintRecorder : public QPaintDevice
{
public: // types
    using Call = std::function<void(QPainter&)>;

public: // construction
    explicit PaintRecorder(const QSize& size);
    ~PaintRecorder() override;

public: // commands
    /// Paints the picture with `painter`.
    void replay(QPainter& painter) const;

public: // overrides
    [[nodiscard]] QPaintEngine* paintEngine() const override;

protected: // overrides
    [[nodiscard]] int metric(PaintDeviceMetric metric) const override;

private: // types
    class Engine;

private: // data
    QSize m_size;
    std::vector<Call> m_calls;
    std::unique_ptr<Engine> m_engine;
};
