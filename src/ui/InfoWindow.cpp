#include "ui/InfoWindow.h"

#include "fields/AccentColour.h"
#include "ui/FocusRing.h"
#include "ui/Styles.h"

#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{

const QString LEGAL_TEXT = uR"(<html><head><style>
h2 { color: )" ACCENT_COLOUR uR"(; margin-top: 10px; border-bottom: 1px solid #444; padding-bottom: 5px; }
p { margin-bottom: 12px; text-align: justify; }
ul { margin-bottom: 12px; }
li { margin-bottom: 6px; }
.disclaimer { color: #FFAF00; font-style: italic; }
</style></head><body>
<h2>1. METODOLOGÍA DE CÁLCULO</h2>
<p>Esta aplicación emplea el <b>Principio de Superposición</b> y la <b>Teoría de Vigas Continuas de Euler-Bernoulli</b> para el análisis estático. Las cargas se procesan mediante discretización para obtener el Momento Flector y las Reacciones de Apoyo. Estos cálculos son modelos matemáticos teóricos basados en condiciones ideales.</p>
<h2>2. MARCO NORMATIVO Y SEGURIDAD</h2>
<p>Los algoritmos aplican coeficientes de seguridad basados en estándares como el <b>Eurocódigo 9</b> y la normativa <b>DGUV V17/18</b>. Sin embargo, el cumplimiento normativo final de un montaje depende enteramente de la ejecución física y la certificación de los elementos de elevación utilizados.</p>
<h2>3. EXENCIÓN DE RESPONSABILIDAD (DISCLAIMER)</h2>
<p class="disclaimer"><b>AVISO CRÍTICO:</b> El uso de estos cálculos en montajes reales es responsabilidad exclusiva y absoluta del usuario.</p>
</body></html>)"_s;

} // namespace

InfoWindow::InfoWindow(QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(u"Información Legal y Normativa"_s);
    setMinimumSize(600, 550);
    setStyleSheet(Styles::DIALOG);

    auto* browser = new QTextBrowser;
    browser->setAccessibleName(u"Información legal y normativa"_s);
    browser->setOpenExternalLinks(true);
    browser->setStyleSheet(Styles::LEGAL_BROWSER);
    browser->setHtml(LEGAL_TEXT);

    auto* close = new QPushButton(u"CERRAR"_s);
    close->setStyleSheet(Styles::INFO_CLOSE_BUTTON);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 20, 20, 20);
    layout->addWidget(browser);
    layout->addWidget(close, 0, Qt::AlignRight);
    new FocusRing(this);
}
