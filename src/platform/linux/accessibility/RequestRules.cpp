#include "platform/linux/accessibility/RequestRules.h"

#include "platform/linux/accessibility/BusRequest.h"
#include "platform/linux/accessibility/TextRequests.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

bool always(const BusRequest &) {
    return true;
}

bool isChild(const BusRequest &request) {
    return request.number(0) >= 0 && request.number(0) < request.object.childCount();
}

/// No screen reaches further, and sums do not overflow.
bool isPlace(const BusRequest &request) {
    constexpr int farthest = 1'000'000;
    return std::abs(static_cast<double>(request.number(0))) <= farthest &&
           std::abs(static_cast<double>(request.number(1))) <= farthest;
}

/// All values of this program are whole numbers.
bool isValue(const BusRequest &request) {
    QAccessibleValueInterface *told = request.object.valueInterface();
    const double value = request.value(2);
    return isWithinReach(request) && told && value >= told->minimumValue().toDouble() &&
           value <= told->maximumValue().toDouble() && std::trunc(value) == value;
}

/// What is covered is seen, but neither enabled nor focusable.
QVariantList stateOfCovered(const BusRequest &request) {
    enum StateType { checked = 4, selected = 23, showing = 25, visible = 30, checkable = 41 }; // AT-SPI's
    const QAccessible::State state = request.object.state();
    const std::pair<bool, StateType> told[] = {{state.checked, checked},
                                               {state.selected, selected},
                                               {!state.invisible && !state.offscreen, showing},
                                               {!state.invisible, visible},
                                               {state.checkable, checkable}};
    quint64 bits = 0;
    for (const auto &[holds, type] : told)
        bits |= quint64(holds) << type;
    return {QVariant::fromValue(QList<uint>{static_cast<uint>(bits), static_cast<uint>(bits >> 32)})};
}

struct Rule {
    QLatin1String method;
    QLatin1String signature;
    bool (*lets)(const BusRequest &) = always;
    /// Where the toolkit is not asked.
    QVariantList (*answer)(const BusRequest &) = nullptr;
};

/// Whatever is not here is refused: selections of items and tables, which nothing in this program has, and
/// what the toolkit does not know either. Properties have the arguments of org.freedesktop.DBus.Properties.
constexpr Rule rules[] = {
    {"Accessible.GetAccessibleId"_L1, "ss"_L1},
    {"Accessible.GetApplication"_L1, ""_L1},
    {"Accessible.GetAttributes"_L1, ""_L1},
    {"Accessible.GetChildAtIndex"_L1, "i"_L1, isChild},
    {"Accessible.GetChildCount"_L1, "ss"_L1},
    {"Accessible.GetChildren"_L1, ""_L1},
    {"Accessible.GetDescription"_L1, "ss"_L1},
    {"Accessible.GetHelpText"_L1, "ss"_L1},
    {"Accessible.GetIndexInParent"_L1, ""_L1},
    {"Accessible.GetInterfaces"_L1, ""_L1},
    {"Accessible.GetLocale"_L1, "ss"_L1},
    {"Accessible.GetLocalizedRoleName"_L1, ""_L1},
    {"Accessible.GetName"_L1, "ss"_L1},
    {"Accessible.GetParent"_L1, "ss"_L1},
    {"Accessible.GetRelationSet"_L1, ""_L1},
    {"Accessible.GetRole"_L1, ""_L1},
    {"Accessible.GetRoleName"_L1, ""_L1},
    {"Accessible.GetState"_L1, ""_L1, isCovered, stateOfCovered},
    {"Accessible.GetState"_L1, ""_L1},
    {"Action.DoAction"_L1, "i"_L1, isWithinReach},
    {"Action.GetActions"_L1, ""_L1},
    {"Action.GetDescription"_L1, "i"_L1},
    {"Action.GetKeyBinding"_L1, "i"_L1},
    {"Action.GetLocalizedName"_L1, "i"_L1},
    {"Action.GetNActions"_L1, "ss"_L1},
    {"Action.GetName"_L1, "i"_L1},
    {"Application.GetApplicationBusAddress"_L1, ""_L1},
    {"Application.GetId"_L1, "ss"_L1},
    {"Application.GetLocale"_L1, "u"_L1},
    {"Application.GetToolkitName"_L1, "ss"_L1},
    {"Application.GetVersion"_L1, "ss"_L1},
    {"Application.SetId"_L1, "ssv"_L1},
    {"Component.Contains"_L1, "iiu"_L1, isPlace},
    {"Component.GetAccessibleAtPoint"_L1, "iiu"_L1, isPlace},
    {"Component.GetAlpha"_L1, ""_L1},
    {"Component.GetExtents"_L1, "u"_L1},
    {"Component.GetLayer"_L1, ""_L1},
    {"Component.GetMDIZOrder"_L1, ""_L1},
    {"Component.GetPosition"_L1, "u"_L1},
    {"Component.GetSize"_L1, ""_L1},
    {"Component.GrabFocus"_L1, ""_L1, isWithinReach},
    {"EditableText.CopyText"_L1, "ii"_L1, selects},
    {"EditableText.CutText"_L1, "ii"_L1, editsRange},
    {"EditableText.DeleteText"_L1, "ii"_L1, editsRange},
    {"EditableText.InsertText"_L1, "isi"_L1, inserts, insertText},
    {"EditableText.PasteText"_L1, "i"_L1, editsAtCursor},
    {"EditableText.SetTextContents"_L1, "s"_L1, isEditable},
    {"Text.AddSelection"_L1, "ii"_L1, selects},
    {"Text.GetAttributeRun"_L1, "ib"_L1, hasOffset},
    {"Text.GetAttributeValue"_L1, "is"_L1, hasOffset},
    {"Text.GetAttributes"_L1, "i"_L1, hasOffset},
    {"Text.GetCaretOffset"_L1, "ss"_L1},
    {"Text.GetCharacterAtOffset"_L1, "i"_L1, hasOffset, characterAt},
    {"Text.GetCharacterCount"_L1, "ss"_L1},
    {"Text.GetCharacterExtents"_L1, "iu"_L1, hasOffset},
    {"Text.GetDefaultAttributeSet"_L1, ""_L1},
    {"Text.GetDefaultAttributes"_L1, ""_L1},
    {"Text.GetNSelections"_L1, ""_L1},
    {"Text.GetOffsetAtPoint"_L1, "iiu"_L1, isPlace},
    {"Text.GetRangeExtents"_L1, "iiu"_L1, hasRange},
    {"Text.GetSelection"_L1, "i"_L1, isSelection},
    {"Text.GetStringAtOffset"_L1, "iu"_L1, hasGranularity, stringAt},
    {"Text.GetText"_L1, "ii"_L1, hasText, textOfRange},
    {"Text.GetTextAfterOffset"_L1, "iu"_L1, hasBoundary, textAfter},
    {"Text.GetTextAtOffset"_L1, "iu"_L1, hasBoundary, textAt},
    {"Text.GetTextBeforeOffset"_L1, "iu"_L1, hasBoundary, textBefore},
    {"Text.RemoveSelection"_L1, "i"_L1, deselects},
    {"Text.SetCaretOffset"_L1, "i"_L1, movesCursor},
    {"Text.SetSelection"_L1, "iii"_L1, reselects},
    {"Value.GetCurrentValue"_L1, "ss"_L1},
    {"Value.GetMaximumValue"_L1, "ss"_L1},
    {"Value.GetMinimumIncrement"_L1, "ss"_L1},
    {"Value.GetMinimumValue"_L1, "ss"_L1},
    {"Value.SetCurrentValue"_L1, "ssv"_L1, isValue},
};

/// "Text.GetText"; what is done to a property is told like a method of its interface.
QString methodOf(const QDBusMessage &message) {
    const QString interface = message.interface().section(u'.', -1);
    if (interface != "Properties"_L1 || !message.signature().startsWith("ss"_L1))
        return interface + u'.' + message.member();
    return message.arguments().at(0).toString().section(u'.', -1) + u'.' + message.member() +
           message.arguments().at(1).toString();
}

} // namespace

Verdict judge(QAccessibleInterface &object, const QDBusMessage &message, const IsCovered &covers) {
    const BusRequest request(object, message, covers);
    const QString method = methodOf(message);
    const auto *rule = std::find_if(std::begin(rules), std::end(rules), [&](const Rule &each) {
        return each.method == method && each.signature == message.signature() && each.lets(request);
    });
    if (rule == std::end(rules))
        return {Verdict::Kind::refused};
    return rule->answer ? Verdict{Verdict::Kind::answered, rule->answer(request)}
                        : Verdict{Verdict::Kind::pass};
}

} // namespace quorbit
