#pragma once

#include <QDialog>

/// The calculation method, the standards referred to and the disclaimer.
class InfoWindow : public QDialog
{
    Q_OBJECT

public: // construction
    explicit InfoWindow(QWidget* parent = nullptr);
};
