"""Whether something of the SDK answers to a selector, and what is wrong if not."""

import names


def counts(member):
    """How many arguments a member takes as a method: one number for each of its forms, none for a mere property."""
    return {len(signature) - 1 for signature in member["signatures"]}


def matches(members, selector):
    """Whether one class's or protocol's `members` (of instances, or of the class itself) have the selector."""
    name, arguments = names.declared(selector), names.count(selector)
    member = members.get(name)
    if member and arguments in counts(member):
        return True
    for candidate in names.getterOf(selector):
        found = members.get(candidate)
        # A property whose getter begins with "is" is declared twice: as itself and by that getter; only that is a message.
        if found and found["property"] and not (candidate == selector and f"is{name[:1].upper()}{name[1:]}" in members):
            return True
    return any(members.get(candidate, {}).get("property") == "readwrite" for candidate in names.setterOf(selector))


def _signatures(members, selector):
    member = members.get(names.declared(selector), {"signatures": []})
    found = [form for form in member["signatures"] if len(form) - 1 == names.count(selector)]
    for name in () if found else names.getterOf(selector):
        found += [[members[name]["type"]]] if members.get(name, {}).get("type") else []
    for name in () if found else names.setterOf(selector):
        found += [["void", members[name]["type"]]] if members.get(name, {}).get("type") else []
    return found


def _trouble(members, selector):
    """What stands in the way although the name is there."""
    name, arguments = names.declared(selector), names.count(selector)
    member = members.get(name)
    if member and member["signatures"]:
        wanted = " or ".join(str(count) for count in sorted(counts(member)))
        return f"its {name} takes {wanted} argument{'' if wanted == '1' else 's'}, not {arguments}"
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
                known = found.setdefault(name, {"signatures": [], "property": None})
                known["signatures"] += member["signatures"]
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

    def signatures(self, name, selector, static):
        """The types of the result and the arguments that the nearest method or property of that name has, in all its forms."""
        for members in self.members(name, static):
            if matches(members, selector):
                return _signatures(members, selector)
        return []

    def _answers(self, holders, selector, static):
        return any(matches(entry["static" if static else "instance"], selector)
                   for name in holders for entry in self.index.ancestry(name))

    @staticmethod
    def _nearest(selector, candidates):
        near = names.nearest(names.declared(selector), candidates)
        return f"nearest: {near}" if near else "and nothing like it"
