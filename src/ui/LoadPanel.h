#pragma once

#include "engine/Project.h"
#include "ui/PropertyPanel.h"

/// The fields of the selected load.
class LoadPanel : public PropertyPanel
{
    Q_OBJECT

public: // construction
    LoadPanel();

public: // queries
    /// Id of the load that the fields stand for, -1 for none.
    [[nodiscard]] int shownId() const;

public: // commands
    /// Fills the fields from `load`.
    void showLoad(const ActiveLoad& load);
    /// Writes the fields into `load`; a mass that does not parse counts as 0.
    void applyTo(ActiveLoad& load) const;
    /// The fields keep their texts but stand for no load any more, and cannot be edited.
    void forgetLoad();

private: // data
    QLineEdit* m_name = nullptr;
    QLineEdit* m_mass = nullptr;
    int m_shownId = -1;
};
