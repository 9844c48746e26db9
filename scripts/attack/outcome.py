"""What an attack did."""

from dataclasses import dataclass


@dataclass
class Outcome:
    tried: int
    failed: int = 0  # links that were lost, or other things that must not happen
    twice: int = 0  # links that were opened more than once, which only a crash of Fernhop excuses
    seen: str = ""  # figures, or why it was not done


def outcomeOf(session, links, seen="", mayDouble=False):
    """Waits for the links and counts them."""
    lost = session.awaitLinks(links)
    twice = sum(count > 1 for link, count in session.arrived().items() if link in set(links))
    return Outcome(len(links), len(lost) + (0 if mayDouble else twice), twice, seen)
