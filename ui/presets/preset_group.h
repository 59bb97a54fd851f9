#pragma once

#include <QWidget>

class QLabel;

namespace quorvane {

class FoldCaption;
class PresetList;

// A list of presets under a caption that counts them. A click or Space on the caption folds the
// list, which the window remembers. While a search is on, the list is folded if it has no hit in
// it.
class PresetGroup final : public QWidget {
  Q_OBJECT

 public:
  // `key` names the group in WindowState. `hint` is shown in place of an empty list.
  PresetGroup(const QString& title, const QString& key, const QString& hint, PresetList* list,
              QWidget* parent = nullptr);

  // How many presets there are and how many of them are in the list.
  void setCounts(std::size_t listed, std::size_t all, bool isSearch);

  // Shows the list if it is folded; for a preset in it that is to be seen.
  void unfold();

  QWidget& caption() const;

 signals:
  // The width of the list or what is visible of it has changed.
  void changed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void setFolded(bool isFolded);
  void render();
  void showPart(QWidget& part, bool isShown);

  const QString title_;
  const QString key_;
  FoldCaption* caption_;
  QLabel* hint_;
  PresetList* list_;
  std::size_t listed_ = 0;
  std::size_t all_ = 0;
  bool isSearch_ = false;
  bool isFolded_ = false;
};

}  // namespace quorvane
