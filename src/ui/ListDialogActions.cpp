#include "engine/PastedLoads.h"
#include "ui/ListDialog.h"
#include "ui/ListModel.h"
#include "ui/ListTable.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

/// So many faults of pasted rows are told, the others are counted.
constexpr qsizetype TOLD_FAULTS = 3;

const QString NOTHING_TO_PASTE = u"No hay filas que pegar (nombre, masa, posición)."_s;
const QString SELECT_FIRST = u"No hay ninguna fila seleccionada."_s;

/// "1 fila", "3 filas".
QString counted(qsizetype count, const QString& one)
{
    return QString::number(count) + u' ' + (count == 1 ? one : one + u's');
}

QString pastedWords(qsizetype pasted, const QStringList& faults)
{
    if (pasted == 0 && faults.isEmpty())
        return NOTHING_TO_PASTE;
    QString words = u"Pegado: "_s + counted(pasted, u"carga"_s) + u'.';
    if (faults.isEmpty())
        return words;
    words += u" No se ha pegado: "_s + faults.first(std::min(faults.size(), TOLD_FAULTS)).join(u' ');
    if (faults.size() > TOLD_FAULTS)
        words += u" Y "_s + counted(faults.size() - TOLD_FAULTS, u"fila"_s) + u" más."_s;
    return words;
}

} // namespace

ListTable* ListDialog::actingTable()
{
    emit followRequested();
    for (ListTable* table : {m_motors, m_loads}) {
        if (table->pickedKey())
            return table;
    }
    say(SELECT_FIRST);
    return nullptr;
}

void ListDialog::duplicate()
{
    ListTable* table = actingTable();
    if (table == nullptr)
        return;
    const QSet<RowKey> keys = table->selectedKeys();
    const bool isMotors = table == m_motors;
    const qsizetype count = addRows(table, [&keys, isMotors](const RowEdits::Lists& lists) {
        return isMotors ? RowEdits::duplicateMotors(lists.motors, keys, lists.loads.trussLength)
                        : RowEdits::duplicateLoads(lists.loads, keys, lists.nextGroupId);
    });
    say(u"Duplicado: "_s + counted(count, u"fila"_s) + u", al lado del original."_s);
}

void ListDialog::mirror()
{
    ListTable* table = actingTable();
    if (table == nullptr)
        return;
    const QSet<RowKey> keys = table->selectedKeys();
    const bool isMotors = table == m_motors;
    bool isChanged = false;
    emit changeRequested([&keys, isMotors, &isChanged](const RowEdits::Lists& lists) {
        const float length = lists.loads.trussLength;
        isChanged = isMotors ? RowEdits::mirrorMotors(lists.motors, keys, length)
                             : RowEdits::mirrorLoads(lists.loads.loads, keys, length);
        return isChanged;
    });
    say(isChanged ? u"Reflejado respecto al centro."_s : u"Reflejado queda en el mismo sitio."_s);
}

void ListDialog::remove()
{
    ListTable* table = actingTable();
    if (table == nullptr)
        return;
    const QSet<RowKey> keys = table->selectedKeys();
    const int row = table->firstSelectedRow();
    const int before = table->model()->rowCount();
    const bool isMotors = table == m_motors;
    emit changeRequested([&keys, isMotors](const RowEdits::Lists& lists) {
        return isMotors ? RowEdits::removeMotors(lists.motors, keys)
                        : RowEdits::removeLoads(lists.loads.loads, keys);
    });
    table->restAt(row);
    say(u"Eliminado: "_s + counted(before - table->model()->rowCount(), u"fila"_s)
        + u". Ctrl+Z lo recupera."_s);
}

void ListDialog::copy()
{
    const ListTable* table = actingTable();
    if (table == nullptr)
        return;
    QGuiApplication::clipboard()->setText(table->selectedText());
    say(u"Copiado: "_s + counted(table->selectedKeys().size(), u"fila"_s) + u'.');
}

void ListDialog::paste()
{
    emit followRequested();
    const PastedLoads pasted = PastedLoads::of(QGuiApplication::clipboard()->text(), m_trussLength);
    const qsizetype count = addRows(m_loads, [&pasted](const RowEdits::Lists& lists) {
        for (const ActiveLoad& load : pasted.loads)
            Edits::hangLoad(lists.loads, load);
        return !pasted.loads.isEmpty();
    });
    say(pastedWords(count, pasted.faults));
}

void ListDialog::sort()
{
    (m_motors->hasFocus() || m_told.table == m_motors ? m_motors : m_loads)->sortByCurrentColumn();
}

void ListDialog::undoProject()
{
    emit undoRequested();
    say({});
}

void ListDialog::changeMotor(const RowKey& key, int column, const QString& text)
{
    emit changeRequested([key, column, text](const RowEdits::Lists& lists) {
        const qsizetype place = RowEdits::placeOf(lists.motors, key);
        if (place < 0)
            return false;
        ListRows::write(lists.motors[place], column, text, lists.loads.trussLength);
        return true;
    });
}

void ListDialog::changeLoad(const RowKey& key, int column, const QString& text)
{
    emit changeRequested([key, column, text](const RowEdits::Lists& lists) {
        const qsizetype place = RowEdits::placeOf(lists.loads.loads, key);
        if (place < 0)
            return false;
        ListRows::write(lists.loads.loads[place], column, text, lists.loads.trussLength);
        return true;
    });
}

qsizetype ListDialog::addRows(ListTable* table, const RowEdits::Change& change)
{
    const auto keysNow = [this, table] {
        const QList<RowKey>& keys = table == m_motors ? m_motorModel->keys() : m_loadModel->keys();
        return QSet<RowKey>(keys.cbegin(), keys.cend());
    };
    const QSet<RowKey> before = keysNow();
    emit changeRequested(change);
    const QSet<RowKey> added = keysNow() - before;
    if (!added.isEmpty())
        table->selectKeys(added, *std::max_element(added.cbegin(), added.cend(),
                                                   [](RowKey a, RowKey b) { return a.id < b.id; }));
    return added.size();
}

// Screen readers are told once what stays as it is while someone types.
void ListDialog::say(const QString& text)
{
    const bool isNew = !text.isEmpty() && text != m_words->text();
    m_words->setText(text);
    if (!isNew)
        return;
    QAccessibleEvent alert(m_words, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}
