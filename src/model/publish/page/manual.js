//<![CDATA[
// Finding as one types, the mark in the contents, and folded lines open on paper.
"use strict";
(() => {
  const box = document.getElementById("find");
  const input = document.getElementById("find-text");
  const list = document.getElementById("find-list");
  const count = document.getElementById("find-count");
  const MOST_SHOWN = 60;
  const SLICE = 2000;  // items that are looked at before the browser gets its turn

  // One entry for each item: where it stands, what it is, and what it is found by.
  const entries = [];
  const gather = (function* () {
    for (const chapter of document.querySelectorAll(".chapter[data-noun]")) {
      const noun = chapter.dataset.noun;
      for (const item of chapter.querySelectorAll("tr[id], article[id]")) {
        const number = item.querySelector("th, .id").textContent;
        const bold = item.querySelector("b");
        const name = bold ? bold.textContent : item.firstElementChild.textContent;
        const group = item.querySelector("i");
        const text = item.querySelector("p:not(.use, .off)");
        const parts = [number, name, group ? group.textContent : "", text ? text.textContent : ""];
        entries.push({ id: item.id, noun, number, name, lower: name.toLowerCase(),
                       text: parts.join("\n").toLowerCase() });
        yield;
      }
    }
  })();
  let gathered = false;
  function gatherSome(most) {
    for (let i = 0; i < most && !gathered; ++i) gathered = gather.next().done;
  }
  function gatherInQuietTimes() {
    if (gathered) return;
    gatherSome(SLICE);
    (window.requestIdleCallback || window.setTimeout)(gatherInQuietTimes);
  }

  // The better the match, the lower: identifier, name, its start, a part of it, any text.
  function rank(entry, wanted) {
    if (entry.number === wanted) return 0;
    if (entry.lower === wanted) return 1;
    if (entry.lower.startsWith(wanted)) return 2;
    return entry.lower.includes(wanted) ? 3 : 4;
  }
  function find(wanted) {
    const words = wanted.split(/\s+/);
    const ranks = [[], [], [], [], []];
    let found = 0;
    for (const entry of entries) {
      if (!words.every((word) => entry.text.includes(word))) continue;
      ++found;
      const place = ranks[rank(entry, wanted)];
      if (place.length < MOST_SHOWN) place.push(entry);
    }
    return { found, best: ranks.flat().slice(0, MOST_SHOWN) };
  }

  let selected = -1;
  function select(index) {
    const options = list.children;
    if (options[selected]) options[selected].setAttribute("aria-selected", "false");
    selected = options.length ? (index + options.length) % options.length : -1;
    if (selected < 0) return input.removeAttribute("aria-activedescendant");
    options[selected].setAttribute("aria-selected", "true");
    options[selected].scrollIntoView({ block: "nearest" });
    input.setAttribute("aria-activedescendant", options[selected].id);
  }
  function show(open) {
    list.hidden = !open;
    input.setAttribute("aria-expanded", String(open));
  }
  function option(entry, index) {
    const item = document.createElement("li");
    item.id = "find-" + index;
    item.dataset.target = entry.id;
    item.setAttribute("role", "option");
    item.setAttribute("aria-selected", "false");
    const name = item.appendChild(document.createElement("b"));
    name.textContent = entry.name;
    const what = item.appendChild(document.createElement("span"));
    what.textContent = entry.noun + (entry.number === entry.name ? "" : " " + entry.number);
    return item;
  }
  function search() {
    const wanted = input.value.trim().toLowerCase();
    selected = -1;
    input.removeAttribute("aria-activedescendant");
    if (!wanted) {
      list.replaceChildren();
      count.textContent = "";
      return show(false);
    }
    gatherSome(Infinity);
    const { found, best } = find(wanted);
    list.replaceChildren(...best.map(option));
    count.textContent = found + " found";
    show(best.length > 0);
  }
  // What lies on the way to a place is laid out only when it comes near, and then moves the place:
  // it is sought again until it stays.
  function settle(id, frames = 12) {
    const target = document.getElementById(id);
    if (!target) return;
    const before = target.getBoundingClientRect().top;
    target.scrollIntoView();
    const moved = Math.abs(target.getBoundingClientRect().top - before) > 1;
    if (frames > 0 && (moved || frames > 9)) requestAnimationFrame(() => settle(id, frames - 1));
  }
  function go(item) {
    show(false);
    location.hash = item.dataset.target;
    settle(item.dataset.target);
  }
  document.addEventListener("click", (event) => {
    const link = event.target.closest("a[href^='#']");
    if (link) requestAnimationFrame(() => settle(link.getAttribute("href").slice(1)));
  });
  if (location.hash) requestAnimationFrame(() => settle(location.hash.slice(1)));


  input.addEventListener("input", search);
  input.addEventListener("focus", () => show(list.children.length > 0));
  input.addEventListener("keydown", (event) => {
    if (event.key === "ArrowDown") select(selected + 1);
    else if (event.key === "ArrowUp") select(selected - 1);
    else if (event.key === "Enter" && list.firstChild) go(list.children[Math.max(selected, 0)]);
    else if (event.key === "Escape" && !list.hidden) show(false);
    else return;
    event.preventDefault();
  });
  list.addEventListener("mousedown", (event) => {
    event.preventDefault();
    const item = event.target.closest("li");
    if (item) go(item);
  });
  box.addEventListener("focusout", (event) => {
    if (!box.contains(event.relatedTarget)) show(false);
  });
  document.addEventListener("keydown", (event) => {
    const typing = /^(INPUT|TEXTAREA|SELECT)$/.test(event.target.nodeName);
    if (event.key !== "/" || typing || event.ctrlKey || event.altKey || event.metaKey) return;
    event.preventDefault();
    input.focus();
    input.select();
  });
  gatherInQuietTimes();

  // The chapter that is read now.
  const marks = new Map();
  for (const link of document.querySelectorAll("#contents > ol > li > a"))
    marks.set(link.hash.slice(1), link);
  const watcher = new IntersectionObserver((changes) => {
    for (const { target, isIntersecting } of changes) {
      const link = marks.get(target.id);
      if (isIntersecting) link.setAttribute("aria-current", "true");
      else link.removeAttribute("aria-current");
    }
  }, { rootMargin: "-30% 0px -69% 0px" });
  for (const chapter of document.querySelectorAll(".chapter")) watcher.observe(chapter);

  // Paper has no handle to open a fold.
  let folded = [];
  window.addEventListener("beforeprint", () => {
    folded = [...document.querySelectorAll("details:not([open])")];
    for (const one of folded) one.open = true;
  });
  window.addEventListener("afterprint", () => {
    for (const one of folded) one.open = false;
  });
})();
//]]>
