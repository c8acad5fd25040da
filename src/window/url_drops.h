#pragma once

#include <QObject>
#include <functional>
#include <string>
#include <vector>

class QMimeData;
class QWidget;

namespace brindle {

/// Whether it holds files or folders of this machine's disks.
bool holds_files(const QMimeData& data);

/// Has `widget`, and what lies in it and takes no files itself, take files and folders that are dropped. `dropped` gets
/// their paths (bytes), after the drop is over. Main thread.
void accept_file_drops(QWidget* widget, std::function<void(std::vector<std::string>)> dropped);

}  // namespace brindle
