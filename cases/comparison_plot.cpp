#include "cases/comparison_plot.h"

#include <QFile>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>

#include <algorithm>
#include <cmath>
#include <functional>

namespace cases {
namespace {

constexpr int PanelWidth = 380;
constexpr int PanelHeight = 310;
constexpr int PanelsPerRow = 3;
constexpr int TitleHeight = 42;
constexpr int WantedTicks = 5;
constexpr double AxisMargin = 0.04; ///< share of an axis that stays free at either end
constexpr int PixelsPerPoint = 2;   ///< of the PNG, for sharp letters
const QColor Ink(40, 44, 52);
const QColor Grid(224, 227, 232);
const QColor CaseColour(47, 107, 171);
const QColor MeasuredColour(200, 80, 30);
const QColor BestColour(24, 140, 90);

struct SPoint
{
    double x;
    double y;
    bool best;
};

/// The range of an axis with the steps at which it has ticks.
class CAxis
{
public:
    CAxis(double low, double high)
    {
        const double span = high > low ? high - low : std::max(std::abs(high), 1.0);
        m_step = niceStep(span / WantedTicks);
        m_low = std::floor((high > low ? low : low - span / 2) / m_step) * m_step;
        m_high = std::ceil((high > low ? high : high + span / 2) / m_step) * m_step;
    }

    /// Share of the axis at which a value stands, from 0 to 1.
    double share(double value) const
    {
        return AxisMargin + (1 - 2 * AxisMargin) * (value - m_low) / (m_high - m_low);
    }

    std::vector<double> ticks() const
    {
        std::vector<double> ticks;
        const auto count = static_cast<int>(std::lround((m_high - m_low) / m_step));
        for (int i = 0; i <= count; ++i) {
            const double tick = m_low + i * m_step;
            ticks.push_back(std::abs(tick) < m_step / 1e6 ? 0 : tick);
        }
        return ticks;
    }

private:
    static double niceStep(double rough)
    {
        const double power = std::pow(10, std::floor(std::log10(rough)));
        for (const double factor : {1.0, 2.0, 2.5, 5.0}) {
            if (rough <= factor * power * (1 + 1e-9)) {
                return factor * power;
            }
        }
        return 10 * power;
    }

    double m_low;
    double m_high;
    double m_step;
};

QString tickText(double value)
{
    return QString::number(value, 'g', 6);
}

CAxis axisOf(const std::vector<SPoint>& points, double SPoint::*member, double also)
{
    double low = also;
    double high = also;
    for (const SPoint& point : points) {
        low = std::min(low, point.*member);
        high = std::max(high, point.*member);
    }
    return {low, high};
}

/// One response over one parameter.
class CPanel
{
public:
    CPanel(QPainter& painter, const QRectF& place, std::vector<SPoint> points, double measured)
        : m_painter(painter)
        , m_place(place.adjusted(70, 12, -18, -52))
        , m_points(std::move(points))
        , m_measured(measured)
        , m_x(axisOf(m_points, &SPoint::x, m_points.front().x))
        , m_y(axisOf(m_points, &SPoint::y, measured))
    {
    }

    void draw(const QString& parameter, const QString& result)
    {
        drawGrid();
        drawLabels(parameter, result);
        const double y = at(0, m_measured).y();
        m_painter.setPen(QPen(MeasuredColour, 1.5, Qt::DashLine));
        m_painter.drawLine(QPointF(m_place.left(), y), QPointF(m_place.right(), y));
        for (const bool best : {false, true}) {
            for (const SPoint& point : m_points) {
                if (point.best == best) {
                    drawPoint(point);
                }
            }
        }
    }

private:
    QPointF at(double x, double y) const
    {
        return {m_place.left() + m_x.share(x) * m_place.width(),
                m_place.bottom() - m_y.share(y) * m_place.height()};
    }

    void drawGrid()
    {
        for (const double tick : m_x.ticks()) {
            const double x = m_place.left() + m_x.share(tick) * m_place.width();
            m_painter.setPen(Grid);
            m_painter.drawLine(QPointF(x, m_place.top()), QPointF(x, m_place.bottom()));
            m_painter.setPen(Ink);
            m_painter.drawText(QRectF(x - 40, m_place.bottom() + 4, 80, 16), Qt::AlignCenter,
                               tickText(tick));
        }
        for (const double tick : m_y.ticks()) {
            const double y = m_place.bottom() - m_y.share(tick) * m_place.height();
            m_painter.setPen(Grid);
            m_painter.drawLine(QPointF(m_place.left(), y), QPointF(m_place.right(), y));
            m_painter.setPen(Ink);
            m_painter.drawText(QRectF(m_place.left() - 66, y - 8, 60, 16),
                               Qt::AlignRight | Qt::AlignVCenter, tickText(tick));
        }
        m_painter.setPen(QPen(Ink, 1));
        m_painter.setBrush(Qt::NoBrush);
        m_painter.drawRect(m_place);
    }

    void drawLabels(const QString& parameter, const QString& result)
    {
        const QFontMetricsF metrics(m_painter.font());
        m_painter.setPen(Ink);
        m_painter.drawText(
            QRectF(m_place.left() - 50, m_place.bottom() + 22, m_place.width() + 60, 20),
            Qt::AlignCenter, metrics.elidedText(parameter, Qt::ElideMiddle, m_place.width() + 56));
        m_painter.save();
        m_painter.translate(m_place.left() - 58, m_place.center().y());
        m_painter.rotate(-90);
        m_painter.drawText(QRectF(-m_place.height() / 2, -10, m_place.height(), 20),
                           Qt::AlignCenter,
                           metrics.elidedText(result, Qt::ElideMiddle, m_place.height()));
        m_painter.restore();
    }

    void drawPoint(const SPoint& point)
    {
        const QPointF centre = at(point.x, point.y);
        m_painter.setPen(QPen(Qt::white, 1));
        m_painter.setBrush(point.best ? BestColour : CaseColour);
        const double radius = point.best ? 6.5 : 4;
        m_painter.drawEllipse(centre, radius, radius);
    }

    QPainter& m_painter;
    const QRectF m_place;
    const std::vector<SPoint> m_points;
    const double m_measured;
    const CAxis m_x;
    const CAxis m_y;
};

/// What the panels of one result stand over: a parameter each, or the cases where none varies.
struct SPanelData
{
    QString parameter;
    std::vector<SPoint> points;
};

std::vector<SPanelData> panelsOf(const SComparison& comparison, std::size_t result)
{
    std::vector<SPanelData> panels;
    for (std::size_t i = 0; i < std::max<std::size_t>(comparison.parameterNames.size(), 1); ++i) {
        const bool varied = i < comparison.parameterNames.size();
        SPanelData panel{varied ? QString::fromStdString(comparison.parameterNames[i]) : "case",
                         {}};
        for (const SRankedCase& ranked : comparison.ranked) {
            const auto x = varied ? numberFrom(ranked.parameters[i])
                                  : std::optional(static_cast<double>(ranked.number));
            if (x) {
                panel.points.push_back({*x, ranked.results[result], ranked.rank == 1});
            }
        }
        if (!panel.points.empty()) {
            panels.push_back(std::move(panel));
        }
    }
    return panels;
}

QSize sizeFor(std::size_t panels)
{
    const int count = static_cast<int>(panels);
    const int columns = std::max(1, std::min(count, PanelsPerRow));
    const int rows = std::max(1, (count + PanelsPerRow - 1) / PanelsPerRow);
    return {columns * PanelWidth, TitleHeight + rows * PanelHeight};
}

void drawTitle(QPainter& painter, const SComparison& comparison, std::size_t result, int width)
{
    const SMeasurement& measurement = comparison.measurements[result];
    QFont bold = painter.font();
    bold.setBold(true);
    const QFont plain = painter.font();
    painter.setFont(bold);
    painter.setPen(Ink);
    const QFontMetricsF metrics(bold);
    const QString name = QString::fromStdString(measurement.name);
    painter.drawText(QPointF(16, 20), metrics.elidedText(name, Qt::ElideMiddle, width - 32));
    painter.setFont(plain);
    const QFontMetricsF small(plain);
    double x = 16;
    const auto legend = [&](const QColor& colour, const QString& text) {
        painter.setPen(colour);
        painter.drawText(QPointF(x, 38), text);
        x += small.horizontalAdvance(text) + 16;
    };
    legend(CaseColour, QStringLiteral("● cases"));
    legend(BestColour, QString("● best: case %1").arg(comparison.ranked.front().number));
    legend(MeasuredColour, QString("- - measured: %1").arg(measurement.value));
}

void drawResult(QPainter& painter, const SComparison& comparison, std::size_t result)
{
    const std::vector<SPanelData> panels = panelsOf(comparison, result);
    const QSize size = sizeFor(panels.size());
    QFont font("DejaVu Sans");
    font.setPixelSize(12);
    painter.setFont(font);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(QRect(QPoint(0, 0), size), Qt::white);
    drawTitle(painter, comparison, result, size.width());
    for (std::size_t i = 0; i < panels.size(); ++i) {
        const int column = static_cast<int>(i) % PanelsPerRow;
        const int row = static_cast<int>(i) / PanelsPerRow;
        const QRectF place(column * PanelWidth, TitleHeight + row * PanelHeight, PanelWidth,
                           PanelHeight);
        CPanel(painter, place, panels[i].points, comparison.measurements[result].value)
            .draw(panels[i].parameter,
                  QString::fromStdString(comparison.measurements[result].name));
    }
}

/// Letters and digits of a result's name; no two results of one comparison get the same.
QString fileStem(const SComparison& comparison, std::size_t result)
{
    QString stem;
    for (const QChar letter : QString::fromStdString(comparison.measurements[result].name)) {
        stem += letter.isLetterOrNumber() || letter == '-' ? letter : QChar('_');
    }
    for (std::size_t i = 0; i < result; ++i) {
        if (fileStem(comparison, i) == "Comparison_" + stem) {
            stem += "_" + QString::number(result + 1);
        }
    }
    return "Comparison_" + stem;
}

void writePng(const QString& file, const QSize& size, const std::function<void(QPainter&)>& draw)
{
    QImage image(size * PixelsPerPoint, QImage::Format_RGB32);
    {
        QPainter painter(&image);
        painter.scale(PixelsPerPoint, PixelsPerPoint);
        draw(painter);
    }
    if (!image.save(file)) {
        throw CComparisonError("can't write " + file.toStdString());
    }
}

void writeSvg(const QString& file, const QSize& size, const std::function<void(QPainter&)>& draw)
{
    QSvgGenerator generator;
    generator.setFileName(file);
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(0, 0), size));
    QPainter painter;
    if (!painter.begin(&generator)) {
        throw CComparisonError("can't write " + file.toStdString());
    }
    draw(painter);
}

} // namespace

QStringList plotComparison(const SComparison& comparison, const std::filesystem::path& folder)
{
    QStringList files;
    for (std::size_t result = 0; result < comparison.measurements.size(); ++result) {
        const QString stem =
            QString::fromStdString((folder / fileStem(comparison, result).toStdString()).string());
        const QSize size = sizeFor(panelsOf(comparison, result).size());
        const auto draw = [&](QPainter& painter) { drawResult(painter, comparison, result); };
        writePng(stem + ".png", size, draw);
        writeSvg(stem + ".svg", size, draw);
        files << stem + ".png" << stem + ".svg";
    }
    return files;
}

} // namespace cases
