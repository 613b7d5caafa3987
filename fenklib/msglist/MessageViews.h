#pragma once
#include <vector>

#include "fenklib/msglist/MessageList.h"
#include "fenklib/msglist/MessageRegistry.h"

class QLabel;
class QTreeWidget;
class QTreeWidgetItem;
namespace devio { class CVokReceiverMate; }

// What both pickers and both list editors show; the windows hold no protocol knowledge.
namespace fenkmsg {

struct CATALOGUE_GROUP {
    basekit::ustring group;
    std::vector<basekit::ustring> names;   // within the group: "GGA"
};

// The receiver's catalogue, group by group in the pickers' order (runs on a worker).
std::vector<CATALOGUE_GROUP> ReadCatalogue(devio::CVokReceiverMate& mate);
// A node per group that has messages, a child per message ("%s (%s)" where described) that
// carries its full name; the 16x16 image of bitmap 3247.
void FillCatalogueTree(QTreeWidget* tree, const std::vector<CATALOGUE_GROUP>& groups, const CMessageRegistry& registry);
// The full name of a message node; empty for a group node or none.
basekit::ustring CatalogueFullName(const QTreeWidgetItem* item);

// The columns "Message", "Period", "Phase", "Count", "Flags", "Description".
void SetupMessageColumns(QTreeWidget* list);
void ShowMessages(QTreeWidget* list, const MessageList& messages, const CMessageRegistry& registry);
void ShowMessageRow(QTreeWidgetItem* row, const devio::vok::MSG& msg, const CMessageRegistry& registry);
std::vector<int> SelectedRows(const QTreeWidget* list);

// The load a list puts on its port, under the list: the share of the port's own line rate
// (bit/s), in red above a full line; bytes per second alone when the rate is not known (0).
void ShowPortLoad(QLabel* label, const MessageList& messages, int lineRate);
// The share as the reader writes percentages ("35%").
basekit::ustring LoadPercent(double share);

}  // namespace fenkmsg
