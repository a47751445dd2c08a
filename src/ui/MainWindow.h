#pragma once

#include "canvas/CanvasHost.h"
#include "engine/LoadLogic.h"
#include "engine/RowEdits.h"
#include "ui/Notices.h"

#include <QList>
#include <QMainWindow>

#include <deque>
#include <functional>
#include <memory>
#include <optional>

class ContrastDialog;
class ControlsGroup;
class LedGroup;
class ListDialog;
class LoadPanel;
class MotorPanel;
class NoticeLine;
class PanelSync;
class QBoxLayout;
class QLabel;
class QStackedWidget;
class QTabBar;
class QTimer;
class ReportPage;
class TrussGroup;
class TrussView;
enum class RecoveryChoice;
struct KeptProject;
struct RecoveryDesk;

/// The one window: tabs of projects over the drawing and its controls, and the report page.
///
/// The engine holds the project of the current tab; every other one waits as a snapshot in
/// `projects`. The window decides what an action does; the fields live in small widgets of their
/// own (`MotorPanel`, `LoadPanel`, `ControlsGroup`, `TrussGroup`, `LedGroup`, `ReportPage`).
class MainWindow : public QMainWindow, public CanvasHost
{
    Q_OBJECT
    Q_INTERFACES(CanvasHost)

public: // construction
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

public: // state
    /// One snapshot for each tab, in tab order.
    QList<LoadLogic::ProjectState> projects;
    int currentProjectIndex = 0;                   ///< the tab whose project is in the engine
    std::deque<LoadLogic::ProjectState> undoStack; ///< newest at the back, shared by all tabs
    int selectedLoadId = -1;                       ///< -1 for none
    int selectedMotorIndex = -1;                   ///< index in the engine's list, -1 for none
    int projectCounter = 100;                      ///< travels with the snapshots, unused otherwise
    bool isRestoring = false;                      ///< fields are being filled, not typed in
    bool blinkOn = false;                          ///< phase of the warnings
    QTimer* blinkTimer = nullptr;

public: // snapshots and undo (MainWindowSnapshots.cpp)
    /// The current project as it stands, with the texts of the screen fields.
    [[nodiscard]] LoadLogic::ProjectState captureCurrentState() const;
    /// Makes `s` the current project and fills the fields; calculates and repaints nothing.
    void restoreProjectState(const LoadLogic::ProjectState& s);
    /// Keeps the current project for undo, of which the last 20 steps stay; nothing while fields are
    /// being filled.
    void pushUndoState();
    /// Goes back one step, in whatever tab it was kept.
    void undo();

public: // results (MainWindowResults.cpp)
    /// Recalculates the current project and refreshes whatever shows it.
    void updateCalculations();
    /// Marks each field red that holds no usable number.
    void validateInputs();
    /// `LoadLogic::formatCoordinate`.
    [[nodiscard]] static QString formatCoordinate(float x);

public: // selection and panels (MainWindowPanels.cpp)
    /// Select the motor at `index`, or the load with this id, and show its panel; or select nothing.
    void showMotorProperties(int index);
    void showLoadProperties(int id);
    void hidePropertyPanels();
    /// What the open panel reads goes into what is selected, as one undo step.
    void onMotorPropertyChanged();
    void onLoadPropertyChanged();
    /// Take away what is selected, as one undo step, unless the open panel is that of something else.
    void deleteSelectedMotor();
    void deleteSelectedLoad();

public: // positions (MainWindowCanvas.cpp)
    /// The project was changed at some position: recalculates and refreshes. With a `perMille` other than
    /// -1 and a screen selected, its array moves to that many thousandths of the truss first.
    void onPositionChanged(int perMille);

public: // what the canvas tells (MainWindowCanvas.cpp)
    [[nodiscard]] int selectedLoad() const override;
    [[nodiscard]] int pickedMotor() const override;
    void motorPicked(int index) override;
    void loadPicked(int id) override;
    void arrayPicked(const LoadLogic::ActiveLoad& segment) override;
    void nothingPicked() override;
    void aboutToEdit() override;
    void edited() override;
    void selectedLoadRemoved() override;
    void arrayEditRequested(const LoadLogic::ActiveLoad& segment) override;

public: // screens (MainWindowScreens.cpp)
    /// Builds the array of the selected segment again from the screen fields, centred at `x` [m];
    /// a negative `x` keeps its centre.
    void updateSelectedLED(float x);

public: // notices, second opinion and list (MainWindowNotices.cpp, MainWindowList.cpp)
    /// Says `notice` until it is taken back by its id; it takes the place of one with the same id.
    void keepNotice(const Notice& notice);
    void dropNotice(const QString& id);
    /// Open "Contraste de reparto" or "Lista", or bring it to the front.
    void openContrast();
    void openList();

public: // files (io/MainWindowFiles.cpp)
    /// Opens the project file at `path` into the current tab; a failure is told in a box.
    /// Returns whether it was opened.
    bool openProjectFile(const QString& path);
    /// Opens the first of `paths` into the current tab and each further one into a new tab; each tab
    /// takes the name in its file. A first file that cannot be read leaves the current tab as it is.
    void openProjectFiles(const QStringList& paths);

public: // calculation sheet (io/MainWindowSheet.cpp)
    /// The calculation sheet of all tabs, in a PDF file that the user chooses.
    void onSheetClicked();
    /// What the contrast shows, as a PDF for the desktop's viewer, which prints it.
    void onPrintContrastClicked();

public: // recovery (io/MainWindowRecovery.cpp)
    /// From now on keeps the work in a file in `folder`, and offers with F9 what earlier sessions left
    /// there.
    void keepRecovery(const QString& folder);
    /// Lists what can be brought back and opens what the user chooses, each in a new tab.
    void recover(RecoveryChoice choice);
    /// Waits until everything is in the file.
    void saveRecovery();
    /// The session ends as usual.
    void endRecovery();
    /// What there is to say of recovery, in a sentence; nothing most of the time.
    [[nodiscard]] std::optional<QString> recoveryNotice() const;
    /// Every tab's project as it stands now, `tabName` being the text of its tab.
    [[nodiscard]] QList<LoadLogic::ProjectState> openProjects() const;
    [[nodiscard]] QList<KeptProject> keptProjects() const;

public: // overrides
    bool eventFilter(QObject* watched, QEvent* event) override;

protected: // overrides (MainWindowDrop.cpp)
    /// Takes project files from the file manager and shows the design page; the first goes into the
    /// current tab, which keeps its title, each further one into a tab of its own.
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

signals:
    /// Project files were dropped; they are opened once the drop is over.
    void filesDropped(const QStringList& paths);
    /// A notice was clicked that the window itself does not know what to do about.
    void noticePicked(const QString& id);

public slots: // each is what its button, its field or its tab does
    /// The fields of loads, the truss and screens.
    void onMassChanged(const QString& text);
    void onAddMotorClicked();
    void onAddLoadClicked();
    void onAddLEDLoadClicked();
    void onGenerateReportClicked();
    void onBackToDesignClicked();
    void onPrintReportClicked();
    void onInfoClicked();
    void onResetProjectClicked();
    void onDynamicFactorClicked();
    void onOpenUserGuideClicked();
    void onTrussLengthChanged(const QString& text);
    void onTrussWeightChanged(const QString& text);
    void onCPLChanged(const QString& text);
    void onLEDParamChanged(const QString& text);
    void onLoadNameChanged(const QString& text);
    void onTabChanged(int index);
    void onAddTab();
    void onCloseTab(int index);
    void onRenameTab(int index);
    void onSaveProjectClicked();
    void onLoadProjectClicked();

private: // set-up (MainWindowSetup.cpp)
    void setupUI();
    void loadFirstProject();
    void acceptFilesEverywhere();
    void buildDesignPage();
    void buildHeaderRow(QBoxLayout* page);
    void buildTabRow(QBoxLayout* page);
    [[nodiscard]] QTabBar* buildTabBar(QWidget* parent);
    void buildWorkRow(QBoxLayout* page);
    void buildCanvasColumn(QBoxLayout* row);
    void buildControlColumn(QBoxLayout* row);
    void connectPanels();
    void connectControls();

private: // keys (MainWindowKeys.cpp)
    /// Does `act` on `keys` wherever the focus is in this window, unless something hangs on the pointer.
    void onKey(const QKeySequence& keys, const std::function<void()>& act);
    /// Leaves the report page; on the design page, what is selected.
    void leaveOrRelease();
    void startKeys();

private: // start (MainWindow.cpp)
    void startBlinking();
    /// Lets the canvas tell its project to screen readers, at most five times a second.
    void startDescribing();
    void sizeToScreen();

private: // notices, second opinion and list (MainWindowNotices.cpp, MainWindowList.cpp)
    void startNoticing();
    /// Has the notices and the open dialog follow the project, some time after the last change.
    void scheduleNotices();
    void refreshNotices();
    void restNotices();
    void noticeDraggedTabs();
    void noticeSavedFile(const QString& path);
    [[nodiscard]] QList<Notices::Field> noticedFields() const;
    [[nodiscard]] QList<Notices::Field> trussFields() const;
    [[nodiscard]] QList<Notices::Field> screenFields() const;
    [[nodiscard]] QList<Notices::Field> panelFields() const;
    void answerNotice();
    void enterField(const QString& objectName);
    void releaseLoad();
    void connectList();
    void changeListed(const RowEdits::Change& change);

private: // tabs (MainWindowTabs.cpp)
    void showTabMenu(const QPoint& point);
    int appendTab(const QString& title);
    void storeCurrentProject();
    [[nodiscard]] bool isProject(int index) const;

private: // recovery (io/MainWindowRecovery.cpp)
    void lookForWork();
    void tellRecovery();
    void keepResetProject();
    void keepReplacedProject();
    /// The tab `closed` of `before` was closed; keeps it, and what else is not open any more.
    void keepVanished(const QList<LoadLogic::ProjectState>& before, int closed);

private: // files (io/MainWindowFiles.cpp)
    /// The project in the file at `path`, or nothing after a box has told why.
    [[nodiscard]] std::optional<LoadLogic::ProjectState> readProject(const QString& path);
    /// Puts `project` into the current tab, as one undo step.
    void replaceProject(const LoadLogic::ProjectState& project);
    void nameCurrentTab(const QString& name);
    /// Says which name of `opened` the HTML report does not show as it is.
    void noticeMarkup(const QList<LoadLogic::ProjectState>& opened);

private: // dropped files (MainWindowDrop.cpp)
    void openDroppedFiles(const QStringList& paths);
    /// Opens the project file at `path` into a new tab that takes the name in the file; one that
    /// cannot be read makes no tab.
    void openInNewTab(const QString& path);
    /// Puts `project` into a new tab that takes its name.
    void addProject(const LoadLogic::ProjectState& project);

private: // reports (io/MainWindowReportPage.cpp, io/MainWindowHtmlReport.cpp)
    void buildReportPage();
    [[nodiscard]] QList<LoadLogic::ProjectState> reportedProjects();
    /// Calculates the current project afresh, so that what is on screen is what was just reported.
    void recalculateAfterReport();
    void showInBrowser(const QString& path);

private: // selection and panels (MainWindowPanels.cpp)
    [[nodiscard]] static bool isMotor(int index);
    /// Whether a motor is selected, and the open panel, if any, is its own.
    [[nodiscard]] bool isMotorEditable() const;
    [[nodiscard]] bool isLoadEditable() const;
    [[nodiscard]] std::optional<MotorIdentity> selectedMotor() const;
    void refreshPanels(const std::optional<MotorIdentity>& motor);
    void selectLoad(int id);

private: // edits
    /// Keeps an undo step, applies `change` and recalculates.
    template <class Change>
    void edit(Change change)
    {
        pushUndoState();
        change();
        updateCalculations();
    }
    void editTrussValue(const QString& text, float& value);
    void showSelectedScreenSize();
    [[nodiscard]] LoadLogic::ActiveLoad typedLoad() const;
    void fillSelectedLoadFields();
    void fillResetFields();

private: // data
    QStackedWidget* m_pages = nullptr;
    QTabBar* m_tabBar = nullptr;
    QLabel* m_hyperstaticWarning = nullptr;
    TrussView* m_canvas = nullptr;
    QTimer* m_describeTimer = nullptr;
    QTimer* m_noticeTimer = nullptr;
    NoticeLine* m_noticeLine = nullptr;
    ContrastDialog* m_contrast = nullptr;
    ListDialog* m_list = nullptr;
    QList<Notice> m_keptNotices;
    MotorPanel* m_motorPanel = nullptr;
    LoadPanel* m_loadPanel = nullptr;
    ControlsGroup* m_controls = nullptr;
    TrussGroup* m_truss = nullptr;
    LedGroup* m_led = nullptr;
    ReportPage* m_reportPage = nullptr;
    std::unique_ptr<PanelSync> m_panels;
    std::shared_ptr<RecoveryDesk> m_recovery; ///< none until it is switched on
};
