// The staff control: shows a tune on one five-line staff, a bar at a time, follows its playback and takes
// edits by mouse and keyboard.
//
// What it draws is BarDrawing's; the surfaces keep what was drawn until the control is told to draw anew
// (RePaint, DisplayBar, a new size). The drawing needs no tune; the rest of the control does nothing without
// one.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "notation/bar_drawing.h"
#include "notation/staff_surface.h"

namespace zelmar {

class NoteDialogue;
class StaffCursor;

// A position on the beat axis, put on the nearest quarter of a beat; half of one stays below.
double NearestQuarterBeat(double position);

class CtlQuilStaff : public QWidget, public BarDrawing {
  Q_OBJECT

 public:
  // Numbers of buttons and of the keys held beside them.
  static constexpr int kLeftButton = 1, kRightButton = 2;
  static constexpr int kShift = 1, kCtrl = 2;

  explicit CtlQuilStaff(QWidget* parent = nullptr);
  ~CtlQuilStaff() override;

  // --- The tune ---

  // Attaches the control to a tune; null detaches it. A SelectedTrack that the tune lacks becomes its last
  // track.
  void Setup(std::shared_ptr<Tune> tune);
  // With the number of bars of the tune, where the caller has counted them.
  void Setup(std::shared_ptr<Tune> tune, std::int16_t bar_count);

  // --- Drawing ---

  // Clears both surfaces and hides clefs, beat marker and guide lines.
  void ClearStaff() override;
  // Shows the bar, and tells the user of each chord in it that is too large to be drawn, once in the life of
  // the tune. The staff may be gone when it returns.
  void DisplayBar(std::int16_t bar, std::int16_t track, std::int32_t red_index = 0,
                  std::int32_t blue_index = 0);
  // Shows CurrentBar anew: the paint event of the control.
  void RePaint();
  // Snaps every note of SelectedTrack and shows the result.
  void PerformAlign();

  // --- Following ---

  void ThisTune_Ticked();
  // Shows the first bar of the row, with no beat marked.
  void ThisTune_Rewound();
  // Goes to the first bar of the row; the caller paints.
  void Rewind();
  // Counts one bar more and goes there.
  void AddBar();

  // --- Editing ---

  // Looks for a note of SelectedTrack in CurrentBar by letter and octave, as it is spelt or else as its pitch
  // is named, and by quarter beat. `index` becomes its place in Tones, 0 for none.
  void FindMatchingNote(std::int16_t pitch, double position, std::int32_t& index);
  // Fills and shows the note dialogue for ThisTone. Coordinates of picBox.
  void FillDialogBox(float x, float y);
  // Button 1 left, 2 right; shift 0 none, 1 Shift, 2 Ctrl; coordinates of picBox in twips.
  void picBox_MouseDown(int button, int shift, float x, float y);
  void picBox_MouseUp(int button, int shift, float x, float y);

  const std::shared_ptr<Tone>& ThisTone() const { return ThisTone_; }
  std::int32_t MatchIndex() const { return MatchIndex_; }
  bool DraggingNote() const { return DraggingNote_; }

  // --- What a screen reader tells ---

  // The bar that is drawn, 0 while none is.
  std::int16_t ShownBar() const { return shown_bar_; }
  // "track 2, Violin", the track alone where the tune does not describe it; empty without a tune.
  QString SpokenTrack() const;
  // Called whenever another bar or track is shown.
  void SetRenamed(std::function<void()> renamed) { renamed_ = std::move(renamed); }

  // --- Surfaces and items on them ---

  StaffSurface* picBox() const { return picBox_; }
  StaffSurface* picWords() const { return picWords_; }
  StaffItem* BeatMarker() const { return BeatMarker_; }
  // One for each beat of the bar; item 0 is always there.
  const std::vector<StaffItem*>& GuideLine() const { return GuideLine_; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  void ChangedBarNumbers();
  void ClickedTopCorner(float x, float y);
  void ClickedClef(float x, float y);
  void ClickedSignature(float x, float y);
  void NoteAdded(std::int16_t bar);

 protected:
  // Presses on the surfaces arrive here, in coordinates of the control: picBox stands at its top left corner.
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  InkColour SystemColour(std::uint32_t colour) const override;

 private:
  void SizeSurfaces();
  void LoadGuideLines();
  void PlaceGuideLines();
  // The paint event comes from the queue, once for all that asked before.
  void PaintSoon();
  // DisplayBar without the telling: gives what is to be told.
  std::vector<ChordPlace> ShowBar(std::int16_t bar, std::int16_t track, std::int32_t red_index,
                                  std::int32_t blue_index);
  void TellOfLargeChords(const std::vector<ChordPlace>& chords);

  // --- Following ---
  bool TurnsThePageAt(std::int16_t bar) const;
  void ShowPage();
  void PlaceBeatMarker(std::int16_t bar, std::int16_t beat);

  // --- Editing ---
  struct NotePlace {
    std::int16_t pitch;
    double position;  // in beats from 1, on a quarter of a beat
  };
  std::optional<double> BeatPositionAt(float x) const;
  std::optional<NotePlace> PlaceAt(float x, float y) const;
  // The place in Tones of the first note of SelectedTrack there in CurrentBar, 0 for none.
  std::int32_t MatchAt(const NotePlace& wanted) const;
  // True when the press was on an area before the notes.
  bool PressedHead(float x, float y);
  void AddNote(const NotePlace& place);
  void DropNote(const NotePlace& place);
  void PutAt(Tone& tone, double position) const;
  void HearNote(float x, float y);
  void HalveNote(float x, float y);
  void TakeUpNote(float x, float y);
  void EditNote(float x, float y);
  void DoubleNote(float x, float y);
  void RemoveNote(float x, float y);
  void ShowDialogue(NoteDialogue& dialogue, float x, float y);
  void Sound(Tone& tone);
  void EndSound();

  // --- The keyboard ---
  bool HandleKey(int key, Qt::KeyboardModifiers modifiers, bool repeated);
  void PressAtCursor(int button, int shift);
  void CancelCarrying();
  void MoveCursor(int quarters, int steps);
  void MoveCursorTo(double position, float y);
  QPointF CursorPlace() const;
  void ShowCursor();
  void ShowFocusRim(bool shown);

  // --- What a screen reader tells ---
  void TellName();
  void TellCursor();

  StaffSurface* picBox_;
  StaffSurface* picWords_;
  StaffItem* BeatMarker_;
  std::vector<StaffItem*> GuideLine_;
  StaffCursor* cursor_;
  std::int16_t shown_bar_ = 0;
  std::function<void()> renamed_;
  bool paint_due_ = false;

  std::shared_ptr<Tone> ThisTone_;  // found by the last press, or being added
  std::int32_t MatchIndex_ = 0;
  bool DraggingNote_ = false;
  Track last_track_;  // whose sound the last note took that was added
  std::int16_t sounding_pitch_ = 0;
  std::uint8_t sounding_channel_ = 0;

  ZELMAR_PROPERTY(std::int16_t, CurrentBar, 1)  // the bar on show
  ZELMAR_PROPERTY(std::int16_t, BarsAcross, 1)  // staves in the row
  ZELMAR_PROPERTY(bool, ShowBeatMarker, true)
  ZELMAR_PROPERTY(bool, ShowBeatLines, false)
  ZELMAR_PROPERTY(bool, AllowEdits, true)
  ZELMAR_PROPERTY(bool, ShowTuneDescription, true)
  ZELMAR_PROPERTY(QString, DataBasePath, {})
  ZELMAR_PROPERTY(QString, HelpPath, {})
  ZELMAR_PROPERTY(QString, GraphicsPath, {})
};

}  // namespace zelmar
