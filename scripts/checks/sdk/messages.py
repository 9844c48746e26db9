"""Checks what is sent, and what our classes implement, against the SDK."""

from sources import Fault
from typewords import difference


class MessageChecks:
    """`uses` is what all the sources hold together, `classes` the names of the headers' classes, `named` the
    selectors that are used by name; the faults come in no order."""

    def __init__(self, uses, responders, explained, headers, classes, named):
        self.uses = uses
        self.typedefs = headers.typedefs
        # What a template is over is written like a class, and stands for any.
        self.known = {*classes, *uses.classes}
        self.responders = responders
        self.index = responders.index
        self.explained = explained
        self.sent = set(named) | {message.selector for message in uses.messages} | {selector for _, selector in uses.selectors}

    def faults(self):
        for message in self.uses.messages:
            yield from self._message(message)
        for place, selector in self.uses.selectors:
            if not self._ownAnywhere(selector) and (why := self._anywhere(selector)):
                yield Fault(place.path, place.line, f"@selector({selector}): nothing answers to it ({why})")
        for method in self.uses.methods:
            yield from self._method(method)

    def _message(self, message):
        if self.explained.has("selector", message.selector):
            return
        sign = "+" if message.static else "-"
        if not message.protocols and message.receiver not in self.known:
            why = None if self._ownAnywhere(message.selector) else self.responders.faultAnywhere(message.selector, message.static)
            if why:
                yield Fault(*self._at(message), f"{sign}{message.selector}: no class of the SDK answers to it ({why})")
            return
        own, holders = self._standsOn(message.receiver, *message.protocols)
        if any(message.selector in (known.static if message.static else known.instance) for known in own):
            return
        unknown = [name for name in holders if name not in self.index.classes and not self.index.protocol(name)]
        if unknown:
            yield from self._unknown(message.place, unknown[0])
        elif why := self.responders.fault(holders or ["NSObject"], message.selector, message.static):
            holder = message.receiver or f"id<{', '.join(message.protocols)}>"
            yield Fault(*self._at(message), f"{sign}[{holder} {message.selector}]: it does not answer to that ({why})")

    def _unknown(self, place, name):
        if not self.explained.has("type", name):
            near = self.responders.index.nearestClass(name)
            yield Fault(place.path, place.line, f"the SDK has no class {name}" + (f" (nearest: {near})" if near else ""))

    @staticmethod
    def _at(use):
        return use.place.path, use.place.line

    def _standsOn(self, *names):
        """Our own classes and protocols that these are or stand on, and the SDK's that they stand on."""
        own, holders, pending = [], [], [name for name in names if name]
        while pending:
            name = pending.pop(0)
            known = self.uses.classes.get(name)
            if known:
                own.append(known)
                pending += [part for part in (known.parent, *sorted(known.protocols)) if part]
            if not known or name in self.index.classes:
                holders.append(name)
            # The SDK's classes may have categories of ours.
            own += [self.uses.classes[above] for above in self.index.superclasses(name) if above != name and above in self.uses.classes]
        return own, holders

    def ancestors(self, name):
        """The SDK's classes that a class, of ours perhaps, is or inherits from."""
        return [above for holder in self._standsOn(name)[1] for above in self.index.superclasses(holder)]

    def _ownAnywhere(self, selector):
        return any(selector in own.instance or selector in own.static for own in self.uses.classes.values())

    def _anywhere(self, selector):
        return self.responders.faultAnywhere(selector, False) and self.responders.faultAnywhere(selector, True)

    def _method(self, method):
        """A method of ours is called by the system, because a superclass or an adopted protocol has it, or by ourselves."""
        _, holders = self._standsOn(method.owner)
        why = self.responders.fault(holders, method.selector, method.static)
        if why and method.selector not in self.sent and not self.explained.has("method", method.selector):
            yield Fault(*self._at(method), f"[{method.owner} {method.selector}]: nobody calls it, neither we nor "
                                           f"{' or '.join(holders)} ({why})")
        forms = [form for name in ([] if why else holders) for form in self.responders.signatures(name, method.selector, method.static)]
        if said := difference(f"[{method.owner} {method.selector}]", method.types, forms, self.typedefs, self.index):
            yield Fault(*self._at(method), said)
