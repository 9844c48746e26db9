"""Whether something of the SDK answers to a selector, and what is wrong if not."""

import names


def matches(members, selector):
    """Whether one class's or protocol's `members` (of instances, or of the class itself) have the selector."""
    name, arguments = names.declared(selector), names.count(selector)
    member = members.get(name)
    if member and arguments in member["arguments"]:
        return True
    for candidate in names.getterOf(selector):
        found = members.get(candidate)
        # A property whose getter begins with "is" is declared twice: as itself and by that getter; only that is a message.
        if found and found["property"] and not (candidate == selector and f"is{name[:1].upper()}{name[1:]}" in members):
            return True
    return any(members.get(candidate, {}).get("property") == "readwrite" for candidate in names.setterOf(selector))


def _trouble(members, selector):
    """What stands in the way although the name is there."""
    name, arguments = names.declared(selector), names.count(selector)
    member = members.get(name)
    if member and member["arguments"]:
        counts = " or ".join(str(count) for count in sorted(member["arguments"]))
        return f"its {name} takes {counts} argument{'' if counts == '1' else 's'}, not {arguments}"
    if member and not arguments:
        return f"the getter is is{name[:1].upper()}{name[1:]}"
    if any(members.get(candidate, {}).get("property") == "readonly" for candidate in names.setterOf(selector)):
        return f"its property {names.setterOf(selector)[0]} is read-only"
    return None


class Responders:
    """Answers for the SDK's classes and protocols."""

    def __init__(self, index):
        self.index = index
        self.anywhere = {False: self._gather("instance"), True: self._gather("static")}

    def _gather(self, side):
        """All members of that name, whichever class has them: what an object of unknown class may answer to."""
        found = {}
        for entry in self.index.everything():
            for name, member in entry[side].items():
                known = found.setdefault(name, {"arguments": set(), "property": None})
                known["arguments"].update(member["arguments"])
                known["property"] = "readwrite" if "readwrite" in (known["property"], member["property"]) else \
                    known["property"] or member["property"]
        return found

    def members(self, name, static):
        """The members of a class or protocol and of all that it stands on, the nearest first."""
        for entry in self.index.ancestry(name):
            yield entry["static" if static else "instance"]
        if static:
            # A class is an object too, and answers like one of the root class.
            yield from self.members("NSObject", False)

    def fault(self, holders, selector, static):
        """None if one of the `holders` (class, protocols) answers to the selector; else what is wrong, in words."""
        lists = [members for name in holders for members in self.members(name, static)]
        if any(matches(members, selector) for members in lists):
            return None
        for members in lists:
            if trouble := _trouble(members, selector):
                return trouble
        if self._answers(holders, selector, not static):
            return f"it is a {'instance' if static else 'class'} method, sent to {'the class' if static else 'an instance'}"
        return self._nearest(selector, {name for members in lists for name in members})

    def faultAnywhere(self, selector, static):
        """The same for a receiver whose class is not known."""
        members = self.anywhere[static]
        if matches(members, selector):
            return None
        return _trouble(members, selector) or self._nearest(selector, members)

    def _answers(self, holders, selector, static):
        return any(matches(entry["static" if static else "instance"], selector)
                   for name in holders for entry in self.index.ancestry(name))

    @staticmethod
    def _nearest(selector, candidates):
        near = names.nearest(names.declared(selector), candidates)
        return f"nearest: {near}" if near else "and nothing like it"
