// Put into a copy of the manual by the tests: uses the page as a reader would, and leaves in its
// root element what came of it.
"use strict";
(() => {
  const root = document.documentElement;
  const faults = [];
  const fault = (text) => faults.push(text);
  addEventListener("error", (event) => fault("error: " + event.message));
  addEventListener("securitypolicyviolation", (event) => fault("blocked: " + event.blockedURI));
  for (const name of ["error", "warn"]) console[name] = (...texts) => fault(texts.join(" "));

  function type(text) {
    const input = document.getElementById("find-text");
    input.focus();
    input.value = text;
    input.dispatchEvent(new Event("input"));
    return [...document.querySelectorAll("#find-list [role=option]")];
  }
  function press(key) {
    document.activeElement.dispatchEvent(new KeyboardEvent("keydown", { key, bubbles: true }));
  }
  function expect(what, holds) {
    if (!holds) fault("not so: " + what);
  }

  function everyItemIsFound() {
    for (const item of document.querySelectorAll(".chapter[data-noun] [id] b")) {
      const name = item.textContent;
      const place = item.closest("[id]").id;
      const found = type(name).map((option) => option.dataset.target);
      expect("found " + name, !name.trim() || found.includes(place));
    }
  }
  function keysLeadToAnItem() {
    document.body.focus();
    document.activeElement.blur();
    press("/");
    expect("/ leads to the input", document.activeElement.id === "find-text");
    const options = type("ControlState");
    press("ArrowDown");
    expect("the first is chosen", options[0].getAttribute("aria-selected") === "true");
    const told = document.activeElement.getAttribute("aria-activedescendant");
    expect("it is told", told === options[0].id);
    press("Enter");
    expect("Enter goes there", location.hash === "#" + options[0].dataset.target);
    expect("the list is shut", document.getElementById("find-list").hidden);
    expect("nothing is found by nonsense", type("no such thing at all").length === 0);
    type("");
  }
  function widthOf(box, part) {
    return box.querySelector(part).getBBox().width;
  }
  function picturesAreSeen() {
    for (const picture of document.querySelectorAll("svg")) {
      picture.scrollIntoView();
      const { width, height } = picture.getBoundingClientRect();
      expect("a picture is seen", width > 50 && height > 20);
      for (const box of picture.querySelectorAll("a, g"))
        expect("in its box: " + box.textContent, widthOf(box, "text") < widthOf(box, "rect"));
    }
  }
  addEventListener("load", () => {
    const before = faults.length;
    try {
      keysLeadToAnItem();
      everyItemIsFound();
      picturesAreSeen();
    } catch (failure) {
      fault("error: " + failure.message);
    }
    root.dataset.looked = String(document.querySelectorAll("svg").length);
    root.dataset.faults = faults.length === before && before === 0 ? "none" : faults.join("; ");
  });
})();
